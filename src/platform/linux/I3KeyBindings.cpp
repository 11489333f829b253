#include "platform/linux/I3KeyBindings.hpp"

#include "foundation/HomeDirectory.hpp"
#include "foundation/StringExtensions.hpp"
#include "foundation/TextEncoding.hpp"
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <algorithm>
#include <map>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

// An action longer than this is cut: it names a command, it does not quote a script.
constexpr std::size_t longestAction = 120;

// The words of a line, split at blanks.
std::vector<std::string> words(std::string_view line)
{
    std::vector<std::string> found;
    std::size_t at = 0;
    while (at < line.size()) {
        const std::size_t start = line.find_first_not_of(" \t", at);
        if (start == std::string_view::npos) {
            break;
        }
        const std::size_t end = std::min(line.find_first_of(" \t", start), line.size());
        found.emplace_back(line.substr(start, end - start));
        at = end;
    }
    return found;
}

// Variables put in, the longest names first so that $mod never eats $mod2's start.
std::string substituted(std::string line, const std::map<std::string, std::string>& variables)
{
    std::vector<const std::pair<const std::string, std::string>*> byLength;
    for (const auto& entry : variables) {
        byLength.push_back(&entry);
    }
    std::sort(byLength.begin(), byLength.end(),
              [](const auto* a, const auto* b) { return a->first.size() > b->first.size(); });
    for (const auto* entry : byLength) {
        for (std::size_t at = line.find(entry->first); at != std::string::npos;
             at = line.find(entry->first, at + entry->second.size())) {
            line.replace(at, entry->first.size(), entry->second);
            if (line.size() > ConfiguredShortcutOwners::largestFile) {
                return line; // variables that grow without end are not followed further
            }
        }
    }
    return line;
}

} // namespace

std::optional<ShortcutBinding> I3KeyBindings::parseCombination(std::string_view text)
{
    return ShortcutBinding::fromJoinedNames(text, '+',
                                            [](std::string_view name) -> std::optional<unsigned> {
                                                const std::string lower = asciiLowercased(name);
                                                if (lower == "shift") {
                                                    return M::shift;
                                                }
                                                if (lower == "control" || lower == "ctrl") {
                                                    return M::control;
                                                }
                                                if (lower == "mod1") {
                                                    return M::alt;
                                                }
                                                if (lower == "mod4") {
                                                    return M::super;
                                                }
                                                return std::nullopt;
                                            });
}

std::optional<std::vector<ShortcutBinding>> I3KeyBindings::parse(std::string_view text)
{
    // Text only: bytes that are no UTF-8 would come back from trimming as replacement
    // characters, longer than they went in.
    if (text.size() > ConfiguredShortcutOwners::largestFile ||
        text.find('\0') != std::string_view::npos || !TextEncoding::isValidUtf8(text)) {
        return std::nullopt;
    }
    std::map<std::string, std::string> variables;
    std::vector<ShortcutBinding> bindings;
    int modeDepth = 0;
    std::string line;
    for (std::size_t at = 0; at <= text.size() && bindings.size() < mostBindings;) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view part = text.substr(at, end - at);
        at = end + 1;
        // A backslash at the end joins the next line.
        if (!part.empty() && part.back() == '\\') {
            line.append(part.substr(0, part.size() - 1));
            if (at <= text.size()) {
                continue;
            }
        } else {
            line.append(part);
        }
        const std::string whole = trimmedString(line);
        line.clear();
        if (whole.empty() || whole.front() == '#') {
            continue;
        }
        const std::vector<std::string> parts = words(whole);
        if (parts[0] == "mode" && whole.back() == '{') {
            ++modeDepth;
            continue;
        }
        if (parts[0] == "}") {
            modeDepth = std::max(0, modeDepth - 1);
            continue;
        }
        if (parts[0] == "set" && parts.size() >= 3 && parts[1].starts_with('$')) {
            const std::size_t valueAt =
                whole.find(parts[2], whole.find(parts[1]) + parts[1].size());
            variables[parts[1]] = whole.substr(valueAt);
            continue;
        }
        if (parts[0] != "bindsym" || modeDepth > 0) {
            continue;
        }
        const std::vector<std::string> bound = words(substituted(whole, variables));
        std::size_t index = 1;
        while (index < bound.size() && bound[index].starts_with("--")) {
            ++index; // --release, --border, --whole-window, --exclude-titlebar
        }
        if (index >= bound.size()) {
            continue;
        }
        if (auto binding = parseCombination(bound[index])) {
            for (std::size_t word = index + 1; word < bound.size(); ++word) {
                binding->action += (binding->action.empty() ? "" : " ") + bound[word];
            }
            if (binding->action.size() > longestAction) {
                binding->action.resize(longestAction);
            }
            bindings.push_back(std::move(*binding));
        }
    }
    return bindings;
}

std::vector<std::string> I3KeyBindings::configurationFiles()
{
    std::vector<std::string> files = ConfiguredShortcutOwners::xdgConfigurationFiles("i3/config");
    // After the user's XDG folder, before the system's.
    files.insert(files.begin() + 1, HomeDirectory::expandTilde("~/.i3/config"));
    files.push_back("/etc/i3/config");
    return files;
}

} // namespace vexto
