#include "../support/ShippedLooks.hpp"
#include "QtTestApplication.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "panel/PanelAppearance.hpp"
#include "panel/PanelView.hpp"
#include "qt/QtCanvas.hpp"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace vexto {
namespace {

class SamplePanelPictureTest : public ::testing::TestWithParam<std::string> {
protected:
    SamplePanelPictureTest() { test::ensureQApplication(); }
};

// The colour the selection shows halfway up: its own colour under the shading, whose white and
// black meet there as 50% grey at the gradient's opacity.
QColor expectedSelection(const PanelAppearance& look)
{
    const Color::Rgba c = look.selection.rgba();
    const double opacity =
        std::min(std::abs(static_cast<double>(look.selectionGradient)), 100.0) / 100;
    const auto blend = [opacity](float channel) {
        return channel * (1 - opacity) + 0.5 * opacity;
    };
    return QColor::fromRgbF(blend(c.red), blend(c.green), blend(c.blue));
}

TEST_P(SamplePanelPictureTest, ThePictureIsNotBlankAndShowsTheSelectionColourWhereTheSelectionIs)
{
    const auto settings = test::lookSettings(VEXTO_PANE_BUNDLE_PATH, GetParam());
    ASSERT_TRUE(settings.has_value());
    const PanelAppearance look = PanelAppearance::fromSettings(*settings, {}, nullptr);
    ASSERT_EQ(look.selection.alpha(), 1.0f) << "the expected colour assumes an opaque selection";
    PanelView view(look, PanelContent::sample(), 1280);
    QImage picture(int(view.frame().width()), int(view.frame().height()),
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        QtCanvas canvas(painter, view.frame().height());
        view.drawRect(canvas, view.bounds());
    }
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 2) {
        for (int x = 0; x < picture.width(); x += 2) {
            colours.insert(picture.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 20u) << "a blank or one-colour picture";

    // Just inside the selection's left edge, clear of the icon, halfway up.
    const Rect fill = view.selectionFillRect();
    const QColor seen =
        picture.pixelColor(int(fill.minX() + 3), int(view.frame().height() - fill.midY()));
    const QColor wanted = expectedSelection(look);
    EXPECT_NEAR(seen.redF(), wanted.redF(), 0.03) << seen.name().toStdString();
    EXPECT_NEAR(seen.greenF(), wanted.greenF(), 0.03) << seen.name().toStdString();
    EXPECT_NEAR(seen.blueF(), wanted.blueF(), 0.03) << seen.name().toStdString();
}

INSTANTIATE_TEST_SUITE_P(DefaultsAndPresets, SamplePanelPictureTest, test::shippedLooks(),
                         test::lookTestName);

} // namespace
} // namespace vexto
