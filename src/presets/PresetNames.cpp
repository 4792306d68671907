#include "presets/PresetNames.h"

#include <cstddef>

namespace orvantesco {
namespace {

constexpr int kLongestName = 38;
constexpr int kLongestFolderLabel = 30;
constexpr std::string_view kFactoryFolder = "Factory Presets";

std::string_view behindLast(std::string_view text, char mark) noexcept {
  const std::size_t found = text.rfind(mark);
  return found == text.npos ? text : text.substr(found + 1);
}

std::string_view upToLast(std::string_view text, char mark) noexcept {
  return text.substr(0, text.rfind(mark));
}

/// Bytes of the UTF-8 character at the start of a text; 1 for a byte that begins none.
std::size_t characterLength(std::string_view text) noexcept {
  const auto first = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  if (first >= 0xC2 && first <= 0xDF) length = 2;
  if (first >= 0xE0 && first <= 0xEF) length = 3;
  if (first >= 0xF0 && first <= 0xF4) length = 4;
  if (length > text.size()) return 1;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 1;
  }
  return length;
}

std::string_view withoutOuterSlashes(std::string_view text) noexcept {
  while (text.starts_with('/')) text.remove_prefix(1);
  while (text.ends_with('/')) text.remove_suffix(1);
  return text;
}

}  // namespace

std::string_view firstCharacters(std::string_view text, int count) noexcept {
  std::size_t end = 0;
  for (int i = 0; i < count && end < text.size(); ++i) end += characterLength(text.substr(end));
  return text.substr(0, end);
}

std::string presetNameOf(std::string_view path) {
  const std::string_view name = upToLast(behindLast(path, '/'), '.');
  return std::string(upToLast(firstCharacters(name, kLongestName), '.'));
}

std::string presetFolderLabelOf(std::string_view relativePath) {
  const std::size_t end = relativePath.rfind('/');
  const std::string_view folder =
      withoutOuterSlashes(end == relativePath.npos ? "" : relativePath.substr(0, end));
  std::string label = folder.starts_with(kFactoryFolder) ? "F:" : "U:";
  label += behindLast(folder, '/');
  return std::string(firstCharacters(label, kLongestFolderLabel));
}

}  // namespace orvantesco
