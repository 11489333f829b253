#include "toolkit/ColorWell.hpp"

#include "toolkit/ColorPanel.hpp"
#include "toolkit/View.hpp"

#include <memory>

namespace vexto {

// --- ColorPanel -------------------------------------------------------------------------

namespace {

std::unique_ptr<ColorPanel>& sharedPanel()
{
    static std::unique_ptr<ColorPanel> panel;
    return panel;
}

bool& ignoresAlphaFlag()
{
    static bool ignores = true;
    return ignores;
}

} // namespace

ColorPanel& ColorPanel::shared()
{
    if (!sharedPanel()) {
        sharedPanel().reset(new ColorPanel());
    }
    return *sharedPanel();
}

ColorPanel* ColorPanel::sharedIfExists()
{
    return sharedPanel().get();
}

void ColorPanel::resetForTesting()
{
    if (sharedPanel() && sharedPanel()->activeWell_ != nullptr) {
        sharedPanel()->activeWell_->active_ = false;
    }
    sharedPanel().reset();
    ignoresAlphaFlag() = true;
}

bool ColorPanel::ignoresAlpha()
{
    return ignoresAlphaFlag();
}

void ColorPanel::setIgnoresAlpha(bool ignores)
{
    ignoresAlphaFlag() = ignores;
}

void ColorPanel::setColor(Color color)
{
    color_ = std::move(color);
    observers_.notify(*this);
}

void ColorPanel::userDidPickColor(Color color)
{
    setColor(color);
    if (activeWell_ != nullptr) {
        activeWell_->takeColorFromPanel(color_);
    }
}

void ColorPanel::setAccessoryView(std::shared_ptr<View> view)
{
    accessoryView_ = std::move(view);
    observers_.notify(*this);
}

void ColorPanel::orderFront()
{
    visible_ = true;
    observers_.notify(*this);
}

void ColorPanel::close()
{
    visible_ = false;
    setActiveWell(nullptr);
    observers_.notify(*this);
}

void ColorPanel::setActiveWell(ColorWell* well)
{
    if (activeWell_ == well) {
        return;
    }
    if (activeWell_ != nullptr) {
        activeWell_->active_ = false;
        activeWell_->setNeedsDisplay();
    }
    activeWell_ = well;
    if (well != nullptr) {
        well->active_ = true;
        well->setNeedsDisplay();
    }
}

// --- ColorWell --------------------------------------------------------------------------

ColorWell::~ColorWell()
{
    if (ColorPanel* panel = ColorPanel::sharedIfExists();
        panel != nullptr && panel->activeWell_ == this) {
        panel->activeWell_ = nullptr;
    }
}

void ColorWell::setColor(Color color)
{
    color_ = std::move(color);
    notify(ViewChange::Value);
    setNeedsDisplay();
}

void ColorWell::activate(bool /*exclusive*/)
{
    ColorPanel& panel = ColorPanel::shared();
    panel.setActiveWell(this);
    panel.setColor(color_);
    panel.orderFront();
}

void ColorWell::deactivate()
{
    if (ColorPanel* panel = ColorPanel::sharedIfExists();
        panel != nullptr && panel->activeWell_ == this) {
        panel->setActiveWell(nullptr);
    }
}

void ColorWell::performClick()
{
    if (!isEnabled()) {
        return;
    }
    if (active_) {
        deactivate();
    } else {
        activate(true);
    }
}

void ColorWell::mouseDown(const Event&)
{
    performClick();
}

void ColorWell::takeColorFromPanel(const Color& color)
{
    setColor(color);
    sendAction();
}

} // namespace vexto
