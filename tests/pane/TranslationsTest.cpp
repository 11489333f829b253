#include "PaneTestFixture.hpp"
#include "foundation/Localization.hpp"
#include "foundation/StringsTable.hpp"
#include "toolkit/PopUpButton.hpp"

#include <cstdlib>
#include <set>

namespace vexto {
namespace {

using test::PaneTest;

// The pane with the shipped tables, in a language, telling which texts no table held.
class TranslationsTest : public PaneTest, public ::testing::WithParamInterface<const char*> {
protected:
    TranslationsTest()
    {
        for (const char* language : {"en.lproj", "de.lproj"}) {
            std::filesystem::copy(std::string(VEXTO_RESOURCES_DIR) + "/" + language,
                                  resources() + "/" + language);
        }
        const char* saved = std::getenv("LC_ALL");
        saved_ = saved != nullptr ? saved : "";
        ::setenv("LC_ALL", GetParam(), 1);
        Localization::setMissingTranslationObserver(
            [this](std::string_view key) { missing.emplace(key); });
    }
    ~TranslationsTest() override
    {
        Localization::setMissingTranslationObserver(nullptr);
        ::setenv("LC_ALL", saved_.c_str(), 1);
    }

    std::set<std::string> missing;
    std::string saved_;
};

TEST_P(TranslationsTest, EveryTextThePaneShowsIsInTheTable)
{
    load();
    for (int tab = 0; tab < o().settingsTabView->numberOfTabViewItems(); ++tab) {
        o().settingsTabView->selectTabViewItemAtIndex(tab);
    }
    // Menus built on demand, as they are on opening.
    for (PopUpButton* popUp : {o().layoutPresetsPopUpButton, o().fontsPopUpButton}) {
        popUp->willOpenMenu();
    }
    pane->updateForSpacesAndAssistiveDevicesAccess(false);
    EXPECT_TRUE(missing.empty()) << "not in the table: " << *missing.begin();
}

INSTANTIATE_TEST_SUITE_P(EnglishAndGerman, TranslationsTest,
                         ::testing::Values("en_US.UTF-8", "de_DE.UTF-8"),
                         [](const auto& info) { return std::string(info.param).substr(0, 2); });

TEST(GermanTableTest, TranslatesEveryEnglishTextKeepingItsDirectives)
{
    const auto english =
        StringsTable::load(std::string(VEXTO_RESOURCES_DIR) + "/en.lproj/Localizable.strings");
    const auto german =
        StringsTable::load(std::string(VEXTO_RESOURCES_DIR) + "/de.lproj/Localizable.strings");
    ASSERT_TRUE(english && german);
    const auto directives = [](const std::string& text) {
        std::multiset<std::string> found;
        for (std::size_t at = text.find('%'); at != std::string::npos;
             at = text.find('%', at + 2)) {
            found.insert(text.substr(at, 2));
        }
        return found;
    };
    for (const auto& [key, text] : english->entries()) {
        const std::string* translated = german->find(key);
        ASSERT_NE(translated, nullptr) << key;
        EXPECT_FALSE(translated->empty()) << key;
        // The date line is a calendar format of its own order.
        if (key.find("%B") == std::string::npos) {
            EXPECT_EQ(directives(*translated), directives(text)) << key;
        }
    }
    EXPECT_EQ(german->size(), english->size());
}

} // namespace
} // namespace vexto
