#include "host/clap/ClapPresetMetadata.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "host/binding/PluginIdentity.h"
#include "host/clap/ClapApi.h"
#include "presets/FactoryPresets.h"
#include "presets/PresetFolders.h"
#include "presets/PresetNames.h"
#include "presets/PresetReader.h"
#include "presets/PresetSaving.h"

namespace orvantesco {
namespace {

/// What is told of a preset.
struct Metadata {
  std::string name;
  std::optional<std::string> loadKey;  ///< none for a file, which holds just one
  std::string folder;
  std::uint32_t flags = kClapPresetIsUserContent;
  std::uint64_t modified = 0;  ///< seconds since 1970, 0 for unknown
};

/// A receiver, safe to call whatever it leaves out.
class Receiver {
 public:
  explicit Receiver(const ClapPresetMetadataReceiver& host) noexcept : receiver(host) {}

  bool refuse(const std::string& message) const {
    if (receiver.on_error != nullptr) receiver.on_error(&receiver, 0, message.c_str());
    return false;
  }

  /// False where no more is wanted.
  bool take(const Metadata& preset) const {
    const char* const key = preset.loadKey ? preset.loadKey->c_str() : nullptr;
    if (receiver.begin_preset == nullptr) return false;
    if (!receiver.begin_preset(&receiver, preset.name.c_str(), key)) return false;
    const ClapUniversalPluginId plugin{"clap", PluginIdentity::clapId};
    tell(receiver.add_plugin_id, &plugin);
    tell(receiver.set_flags, preset.flags);
    tellFeatures(preset);
    if ((preset.flags & kClapPresetIsFactoryContent) != 0) {
      tell(receiver.add_creator, PluginIdentity::vendor);
    }
    if (preset.modified != 0) tell(receiver.set_timestamps, 0u, preset.modified);
    return true;
  }

 private:
  void tellFeatures(const Metadata& preset) const {
    for (const char* feature : PluginIdentity::features) tell(receiver.add_feature, feature);
    if (preset.folder.empty()) return;
    tell(receiver.add_feature, preset.folder.c_str());
    tell(receiver.set_description, preset.folder.c_str());
  }

  template <class Operation, class... Arguments>
  void tell(Operation operation, Arguments... arguments) const {
    if (operation != nullptr) operation(&receiver, arguments...);
  }

  const ClapPresetMetadataReceiver& receiver;
};

bool tellCarried(const Receiver& receiver) {
  for (const FactoryPreset& preset : factoryPresets()) {
    Metadata metadata;
    metadata.name = preset.name;
    metadata.folder = preset.folder;
    metadata.loadKey = metadata.folder + "/" + metadata.name;
    metadata.flags = kClapPresetIsFactoryContent;
    if (!receiver.take(metadata)) break;
  }
  return true;
}

/// "Echo/Long" for "/User Presets/Echo/Long/Slap.txt", and nothing for a file that lies directly in
/// a tree or outside.
std::string folderOf(std::string_view relativePath) {
  const std::size_t tree = relativePath.find('/', 1);
  const std::size_t file = relativePath.rfind('/');
  if (tree == relativePath.npos || file <= tree) return {};
  return std::string(relativePath.substr(tree + 1, file - tree - 1));
}

std::uint64_t modifiedAt(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return 0;
  return static_cast<std::uint64_t>(std::max<std::int64_t>(info.st_mtime, 0));
}

bool tellFile(const std::string& path, const Receiver& receiver) {
  const PresetResult result = readPreset(path);
  if (const auto* error = std::get_if<PresetError>(&result)) {
    return receiver.refuse(path + ": " + error->message);
  }
  const std::string relativePath = relativePresetPath(path, presetFolders());
  Metadata metadata;
  metadata.name = presetNameOf(path);
  metadata.folder = folderOf(relativePath);
  if (relativePath.starts_with(kFactoryTree)) metadata.flags = kClapPresetIsFactoryContent;
  metadata.modified = modifiedAt(path);
  receiver.take(metadata);
  return true;
}

}  // namespace

bool tellPresetMetadata(std::uint32_t locationKind, const char* location,
                        const ClapPresetMetadataReceiver& to) {
  const Receiver receiver(to);
  if (locationKind == kClapPresetInPlugin) return tellCarried(receiver);
  if (locationKind == kClapPresetInFile && location != nullptr) {
    return tellFile(location, receiver);
  }
  return receiver.refuse("presets are in files and in the plug-in, and nowhere else");
}

}  // namespace orvantesco
