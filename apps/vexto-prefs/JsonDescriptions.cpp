#include "JsonDescriptions.hpp"

#include "foundation/Base64.hpp"
#include "foundation/NumericText.hpp"
#include "foundation/QuotedText.hpp"
#include "foundation/TypedStreamUnarchiver.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/Control.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "toolkit/TextView.hpp"
#include "toolkit/Window.hpp"

#include <cmath>

namespace vexto {

namespace {

std::string number(double value)
{
    if (!std::isfinite(value)) {
        return "null";
    }
    return NumericText::shortestText(value);
}

std::string frame(const Rect& r)
{
    return "[" + number(r.minX()) + "," + number(r.minY()) + "," + number(r.width()) + "," +
           number(r.height()) + "]";
}

std::string menuItems(const Menu& menu)
{
    std::string out = "[";
    for (int i = 0; i < menu.numberOfItems(); ++i) {
        const MenuItem& item = *menu.itemAtIndex(i);
        out +=
            std::string(i > 0 ? "," : "") + "{\"title\":" + JsonDescriptions::string(item.title()) +
            ",\"tag\":" + std::to_string(item.tag()) + ",\"state\":" + std::to_string(item.state());
        if (item.isSeparatorItem()) {
            out += ",\"separator\":true";
        }
        if (item.submenu()) {
            out += ",\"submenu\":" + menuItems(*item.submenu());
        }
        out += "}";
    }
    return out + "]";
}

} // namespace

std::string JsonDescriptions::string(std::string_view text)
{
    return QuotedText::quoted(text);
}

std::string JsonDescriptions::value(const PlistValue& value)
{
    switch (value.type()) {
    case PlistValue::Type::Boolean:
        return *value.asBoolean() ? "true" : "false";
    case PlistValue::Type::Integer:
        return std::to_string(*value.asInteger());
    case PlistValue::Type::Real:
        return number(*value.asReal());
    case PlistValue::Type::String:
        return string(*value.asString());
    case PlistValue::Type::Date:
        return "{\"date\":" + number(value.asDate()->secondsSinceReferenceDate) + "}";
    case PlistValue::Type::Data: {
        std::string out = "{\"data\":\"" + Base64::encode(*value.asData()) + "\"";
        if (const auto object = TypedStreamUnarchiver::unarchiveObjectWithData(*value.asData())) {
            if (const Color* color = std::get_if<Color>(&*object)) {
                out += ",\"color\":" + string(color->description());
            }
        }
        return out + "}";
    }
    case PlistValue::Type::Array: {
        std::string out = "[";
        for (const PlistValue& item : *value.asArray()) {
            out += (out.size() > 1 ? "," : "") + JsonDescriptions::value(item);
        }
        return out + "]";
    }
    case PlistValue::Type::Dictionary: {
        std::string out = "{";
        for (const auto& [key, item] : *value.asDictionary()) {
            out += (out.size() > 1 ? "," : "") + string(key) + ":" + JsonDescriptions::value(item);
        }
        return out + "}";
    }
    }
    return "null";
}

std::string JsonDescriptions::setting(std::string_view key, const PlistValue* stored)
{
    return "{\"setting\":" + string(key) +
           ",\"value\":" + (stored != nullptr ? value(*stored) : "null") + "}";
}

std::string JsonDescriptions::control(std::string_view outlet, const View& view,
                                      std::string_view link)
{
    std::string out = "{\"outlet\":" + string(outlet) + ",\"class\":" + string(view.className()) +
                      ",\"hidden\":" + (view.isHidden() ? "true" : "false") +
                      ",\"frame\":" + frame(view.frame());
    if (const auto* control = dynamic_cast<const Control*>(&view)) {
        out += std::string(",\"enabled\":") + (control->isEnabled() ? "true" : "false");
    }
    if (const auto* button = dynamic_cast<const Button*>(&view)) {
        out += ",\"state\":" + std::to_string(button->state()) +
               ",\"title\":" + string(button->title());
    } else if (const auto* popUp = dynamic_cast<const PopUpButton*>(&view)) {
        out += ",\"selectedIndex\":" + std::to_string(popUp->indexOfSelectedItem()) +
               ",\"selectedTag\":" + std::to_string(popUp->selectedTag()) +
               ",\"selectedTitle\":" + string(popUp->titleOfSelectedItem()) +
               ",\"title\":" + string(popUp->title()) + ",\"items\":" + menuItems(popUp->menu());
    } else if (const auto* slider = dynamic_cast<const Slider*>(&view)) {
        out += ",\"value\":" + number(slider->doubleValue()) +
               ",\"min\":" + number(slider->minValue()) + ",\"max\":" + number(slider->maxValue());
    } else if (const auto* well = dynamic_cast<const ColorWell*>(&view)) {
        out += ",\"color\":" + string(well->color().description()) +
               ",\"title\":" + string(well->title());
    } else if (const auto* text = dynamic_cast<const TextView*>(&view)) {
        out += ",\"string\":" + string(text->string());
    } else if (const auto* field = dynamic_cast<const Control*>(&view)) {
        out += ",\"string\":" + string(field->stringValue());
    }
    if (!view.notice().empty()) {
        out += ",\"notice\":" + string(view.notice());
    }
    if (!view.toolTip().empty()) {
        out += ",\"toolTip\":" + string(view.toolTip());
    }
    // A button inside the control (a link's arrow): where the mouse is tracked, and its tip.
    if (!view.trackingAreas().empty()) {
        const Rect area = view.trackingAreas().front()->rect();
        out += ",\"actionButton\":" + frame(area);
        const std::string tip = view.toolTipAtPoint(Point{area.midX(), area.midY()});
        if (!tip.empty()) {
            out += ",\"actionButtonToolTip\":" + string(tip);
        }
    }
    if (!link.empty()) {
        out += ",\"link\":" + string(link);
    }
    return out + "}";
}

std::string JsonDescriptions::window(const Window& window, const TabView* tabs)
{
    const TabViewItem* selected = tabs != nullptr ? tabs->selectedTabViewItem() : nullptr;
    return "{\"frame\":" + frame(window.frame()) +
           ",\"selectedTab\":" + (selected != nullptr ? string(selected->identifier()) : "null") +
           "}";
}

std::string JsonDescriptions::colorPanel(const ColorPanel& panel)
{
    const ColorWell* well = panel.activeWell();
    const View* strip = panel.accessoryView().get();
    const Slider* slider = strip != nullptr ? enclosedSlider(*strip) : nullptr;
    return std::string("{\"visible\":") + (panel.isVisible() ? "true" : "false") +
           ",\"color\":" + string(panel.color().description()) +
           ",\"well\":" + (well != nullptr ? string(well->title()) : "null") + ",\"strip\":" +
           (slider != nullptr ? "{\"value\":" + number(slider->doubleValue()) +
                                    ",\"min\":" + number(slider->minValue()) +
                                    ",\"max\":" + number(slider->maxValue()) +
                                    ",\"frame\":" + frame(strip->frame()) + "}"
                              : "null") +
           "}";
}

Slider* JsonDescriptions::enclosedSlider(const View& view)
{
    for (const auto& subview : view.subviews()) {
        if (auto* slider = dynamic_cast<Slider*>(subview.get())) {
            return slider;
        }
    }
    return nullptr;
}

} // namespace vexto
