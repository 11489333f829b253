#pragma once

#include "toolkit/TextView.hpp"

#include <string>
#include <string_view>

namespace vexto {

class KRVXHotKeyClearButton;

// A one-line field that records one hot key: the slot it edits is a hot-key identifier (the
// setting key of a hot-key table) and a direction inside that table.
class KRVXHotKeyTextView : public TextView {
public:
    static constexpr std::string_view unsetIdentifier = "Dummy";
    static constexpr std::string_view anyDirection = "Any";

    using TextView::TextView;
    const char* className() const override { return "HotKeyTextView"; }

    // Binds the field to a slot; no direction means "Any".
    void setHotKeyIdentifier(std::string identifier, std::string direction = {});
    std::string hotKeyIdentifier() const;
    std::string direction() const;

    KRVXHotKeyClearButton* deleteButton() const { return deleteButton_; }
    void setDeleteButton(KRVXHotKeyClearButton* button) { deleteButton_ = button; }

private:
    std::string identifier_;
    std::string direction_;
    KRVXHotKeyClearButton* deleteButton_ = nullptr;
};

} // namespace vexto
