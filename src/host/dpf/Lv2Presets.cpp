#include "host/dpf/Lv2Presets.h"

#include <set>
#include <string_view>

#include "host/binding/PluginIdentity.h"
#include "host/dpf/DpfState.h"

namespace orvantesco {
namespace {

constexpr std::string_view prefixes =
    "@prefix lv2: <http://lv2plug.in/ns/lv2core#> .\n"
    "@prefix owl: <http://www.w3.org/2002/07/owl#> .\n"
    "@prefix pset: <http://lv2plug.in/ns/ext/presets#> .\n"
    "@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .\n"
    "@prefix state: <http://lv2plug.in/ns/ext/state#> .\n"
    "@prefix xsd: <http://www.w3.org/2001/XMLSchema#> .\n";

bool isPlain(char letter) noexcept {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= '0' && letter <= '9');
}

/// A string of turtle. What is not ASCII stays as it is, in UTF-8; control characters, which a file
/// name may hold, become blanks.
std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '"' || letter == '\\') out += '\\';
    out += byte < ' ' ? ' ' : letter;
  }
  return out + '"';
}

/// A part of a URI: RFC 3986, section 2.1.
std::string percentEncoded(std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string out;
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (isPlain(letter) || letter == '-' || letter == '.' || letter == '_') {
      out += letter;
    } else {
      out += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
  }
  return out;
}

std::string uri(std::string_view kind, std::string_view path) {
  return PluginIdentity::lv2Uri + std::string(":") + std::string(kind) + ":" + std::string(path);
}

std::string stateProperty() {
  return "<" + std::string(PluginIdentity::lv2Uri) + "#" + kDpfStateKey + ">";
}

std::string bankUri(std::string_view folder) { return uri("bank", percentEncoded(folder)); }

/// What both files say, without an end.
std::string statements(const FactoryState& preset) {
  const std::string label = std::string(preset.folder) + ": " + std::string(preset.name);
  return "\n<" + lv2PresetUri(preset) + ">\n\ta pset:Preset ;\n\tlv2:appliesTo <" +
         PluginIdentity::lv2Uri + "> ;\n\tpset:bank <" + bankUri(preset.folder) +
         "> ;\n\trdfs:label " + quoted(label);
}

}  // namespace

std::string lv2PresetUri(const FactoryState& preset) {
  return uri("preset", percentEncoded(preset.folder) + "/" + percentEncoded(preset.name));
}

std::string lv2PresetFileName(const FactoryState& preset) {
  std::string name = std::string(preset.folder) + "-" + std::string(preset.name);
  for (char& letter : name) {
    if (!isPlain(letter)) letter = '-';
  }
  return name + ".ttl";
}

std::string lv2PresetManifest(std::span<const FactoryState> presets) {
  std::string text = std::string(prefixes) + "\n" + stateProperty() +
                     "\n\ta owl:DatatypeProperty ;\n\trdfs:label \"state\" ;\n"
                     "\trdfs:domain state:State ;\n\trdfs:range xsd:string .\n";
  std::set<std::string_view> banks;
  for (const FactoryState& preset : presets) {
    if (banks.insert(preset.folder).second) {
      text += "\n<" + bankUri(preset.folder) + ">\n\ta pset:Bank ;\n\trdfs:label " +
              quoted(preset.folder) + " .\n";
    }
    text += statements(preset) + " ;\n\trdfs:seeAlso <" + lv2PresetFileName(preset) + "> .\n";
  }
  return text;
}

std::string lv2PresetFile(const FactoryState& preset) {
  return std::string(prefixes) + statements(preset) + " ;\n\tstate:state [\n\t\t" +
         stateProperty() + " " + quoted(preset.stateText) + "\n\t] .\n";
}

}  // namespace orvantesco
