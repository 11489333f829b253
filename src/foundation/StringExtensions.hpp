#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// White space and line breaks (the Unicode ones too) removed at both ends.
std::string trimmedString(std::string_view text);
// The parts between the separators, empty ones too: "a::b" gives "a", "", "b".
std::vector<std::string_view> splitString(std::string_view text, char separator);
// The ASCII capitals made small; every other byte as it is.
std::string asciiLowercased(std::string_view text);
// True when the path exists and is a folder.
bool isFolderPath(const std::string& path);
// Expands "~"; true when the path is a folder already or could be created with its parents.
bool checkFolderPathAndCreateIfNecessary(const std::string& path);

} // namespace vexto
