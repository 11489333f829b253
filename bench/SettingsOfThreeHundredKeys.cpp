#include "SettingsOfThreeHundredKeys.hpp"

#include "foundation/TypedStreamArchiver.hpp"

#include <string>

namespace vexto::bench {

PlistDictionary settingsOfThreeHundredKeys()
{
    PlistDictionary settings;
    for (int i = 0; i < 20; ++i) {
        const Color color = i % 2 == 0 ? Color::calibratedWhite(i / 20.0f, 0.5f)
                                       : Color::calibratedRGB(0.1f * (i % 10), 0.3f, 0.7f, 1.0f);
        settings.emplace("Color " + std::to_string(i),
                         TypedStreamArchiver::archivedDataWithRootObject(color));
    }
    for (int i = 0; i < 280; ++i) {
        const std::string key = "Setting " + std::to_string(i);
        switch (i % 5) {
        case 0:
            settings.emplace(key, i % 2 == 0);
            break;
        case 1:
            settings.emplace(key, i * 100);
            break;
        case 2:
            settings.emplace(key, 0.2f * static_cast<float>(i));
            break;
        case 3:
            settings.emplace(key, PlistArray{"Finder", "Safari", "Terminal"});
            break;
        default:
            settings.emplace(key,
                             PlistDictionary{{"Forward", PlistDictionary{{"Key Code", "48"},
                                                                         {"Modifiers", "1048576"},
                                                                         {"Character", "\t"}}}});
        }
    }
    return settings;
}

} // namespace vexto::bench
