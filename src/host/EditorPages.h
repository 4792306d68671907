#pragma once

namespace orvantesco {

/// Pages of the editor that can be current, counted from 0.
inline constexpr int kPages = 18;
inline constexpr int kDelayPage = 2;
/// From here on a page shows the steps of one slot.
inline constexpr int kFirstSubPage = 10;

constexpr bool isPage(int page) noexcept { return page >= 0 && page < kPages; }

}  // namespace orvantesco
