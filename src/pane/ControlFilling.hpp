#pragma once

#include <cstdint>

namespace vexto {

class PopUpButton;
class TextField;

// Fill a control from the pane's settings, under the key the pane knows the control by; a
// control without a key is left alone.

// Selects the item at the stored index, or at the default index when nothing is stored. No range
// check: an index no item has leaves nothing selected.
void KRVXSetPopUpButtonState(PopUpButton& popUp, std::int64_t defaultIndex);
// Selects the item with the stored tag; when nothing is stored or no item has that tag, the item
// with the default tag; when no item has that either, nothing.
void KRVXSetPopUpButtonStateFromTag(PopUpButton& popUp, std::int64_t defaultTag);
// Shows the stored list joined with "," (no blanks), or nothing.
void KRVXSetTextFieldStringValue(TextField& field);

} // namespace vexto
