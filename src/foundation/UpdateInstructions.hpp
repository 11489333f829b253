#pragma once

#include <string_view>

// What the pane and the daemon say to each other about software updates: the instructions the
// pane passes on, and the keys of the daemon's defaults that the pane reads back. Each text
// stands here once.
namespace vexto::updateinstructions {

inline constexpr std::string_view toggleAutomaticChecks = "Toggle Automatic Checks";
inline constexpr std::string_view checkNow = "Check Now";
inline constexpr std::string_view invalidateUpdateVersion = "Invalidate Update Version";
inline constexpr std::string_view automaticChecksKey = "SUEnableAutomaticChecks";
inline constexpr std::string_view statusKey = "KRVXSparkleWrapperStatus";

} // namespace vexto::updateinstructions
