#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vexto {

// A localised strings table in the platform's ".strings" format: `"key" = "value";` entries with
// C-style comments, in UTF-8 or in UTF-16 with a byte-order mark.
class StringsTable {
public:
    // None when the text is not a valid table.
    static std::optional<StringsTable> parse(std::span<const std::uint8_t> bytes);
    // None when the file cannot be read or is no table, with why in `problem`.
    static std::optional<StringsTable> load(const std::string& path,
                                            std::string* problem = nullptr);

    const std::string* find(std::string_view key) const;
    std::size_t size() const { return entries_.size(); }
    const std::map<std::string, std::string, std::less<>>& entries() const { return entries_; }

private:
    std::map<std::string, std::string, std::less<>> entries_;
    friend class StringsTableParser;
};

} // namespace vexto
