#include "widgets/KRVXClickButtonTextField.hpp"

#include "toolkit/Button.hpp"

namespace vexto {

void KRVXClickButtonTextField::mouseDown(const Event&)
{
    if (clickButton_ != nullptr && clickButton_->isEnabled()) {
        clickButton_->performClick();
    }
}

} // namespace vexto
