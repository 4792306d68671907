#pragma once

#include <string>
#include <string_view>

namespace orvantesco {

/// The name that is shown for a preset file: what stands between the last "/" and the last "." of
/// its path, 38 characters at most, up to the last "." that is left in it ("a" for "a.b.txt").
std::string presetNameOf(std::string_view path);

/// The label of a preset's folder for a path relative to the presets' root, such as
/// "/Factory Presets/Echo/Slap.txt": "F:Echo", 30 characters at most; "U:" outside the factory
/// tree.
std::string presetFolderLabelOf(std::string_view relativePath);

/// The first `count` characters of a text. A byte that belongs to no UTF-8 character counts as one.
std::string_view firstCharacters(std::string_view text, int count) noexcept;

}  // namespace orvantesco
