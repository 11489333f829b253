#include "settings/SettingDeclarations.hpp"

namespace vexto::settingdeclarations {

const SettingDeclaration* forKey(std::string_view key)
{
    for (const SettingDeclaration& declaration : declarations) {
        if (declaration.key == key) {
            return &declaration;
        }
    }
    return nullptr;
}

} // namespace vexto::settingdeclarations
