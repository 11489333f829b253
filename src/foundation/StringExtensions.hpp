#pragma once

#include <string>
#include <string_view>

namespace vexto {

// White space and line breaks (the Unicode ones too) removed at both ends.
std::string trimmedString(std::string_view text);
// The ASCII capitals made small; every other byte as it is.
std::string asciiLowercased(std::string_view text);
// True when the path exists and is a folder.
bool isFolderPath(const std::string& path);
// Expands "~"; true when the path is a folder already or could be created with its parents.
bool checkFolderPathAndCreateIfNecessary(const std::string& path);

} // namespace vexto
