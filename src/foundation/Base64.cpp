#include "foundation/Base64.hpp"

#include <array>

namespace vexto {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> decodingTable()
{
    std::array<std::int8_t, 256> table{};
    table.fill(-1);
    for (int i = 0; i < 64; ++i) {
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::int8_t>(i);
    }
    return table;
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

} // namespace

std::string Base64::encode(std::span<const std::uint8_t> bytes)
{
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const unsigned chunk = (unsigned(bytes[i]) << 16) |
                               (i + 1 < bytes.size() ? unsigned(bytes[i + 1]) << 8 : 0) |
                               (i + 2 < bytes.size() ? unsigned(bytes[i + 2]) : 0);
        out += alphabet[(chunk >> 18) & 63];
        out += alphabet[(chunk >> 12) & 63];
        out += i + 1 < bytes.size() ? alphabet[(chunk >> 6) & 63] : '=';
        out += i + 2 < bytes.size() ? alphabet[chunk & 63] : '=';
    }
    return out;
}

std::optional<std::vector<std::uint8_t>> Base64::decode(std::string_view text)
{
    static constexpr auto table = decodingTable();
    std::vector<std::uint8_t> out;
    out.reserve(text.size() / 4 * 3);
    unsigned chunk = 0;
    int pending = 0; // sextets collected in `chunk`
    int padding = 0;
    for (char c : text) {
        if (isSpace(c)) {
            continue;
        }
        if (c == '=') {
            ++padding;
            continue;
        }
        const std::int8_t value = table[static_cast<unsigned char>(c)];
        if (value < 0 || padding > 0) {
            return std::nullopt; // outside the alphabet, or text after the padding
        }
        chunk = (chunk << 6) | static_cast<unsigned>(value);
        if (++pending == 4) {
            out.push_back(static_cast<std::uint8_t>(chunk >> 16));
            out.push_back(static_cast<std::uint8_t>(chunk >> 8));
            out.push_back(static_cast<std::uint8_t>(chunk));
            chunk = 0;
            pending = 0;
        }
    }
    if (pending == 1 || padding > 2 || (padding > 0 && pending + padding != 4)) {
        return std::nullopt;
    }
    if (pending == 2) {
        out.push_back(static_cast<std::uint8_t>(chunk >> 4));
    } else if (pending == 3) {
        out.push_back(static_cast<std::uint8_t>(chunk >> 10));
        out.push_back(static_cast<std::uint8_t>(chunk >> 2));
    }
    return out;
}

} // namespace vexto
