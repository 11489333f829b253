#pragma once

#include "toolkit/Control.hpp"

namespace vexto {

// A slider between a minimum and a maximum; the value stays within them.
class Slider : public Control {
public:
    explicit Slider(Rect frame = {}, double minValue = 0, double maxValue = 1);
    const char* className() const override { return "Slider"; }

    double minValue() const { return min_; }
    double maxValue() const { return max_; }
    void setMinValue(double value);
    void setMaxValue(double value);
    bool isContinuous() const { return continuous_; }
    void setContinuous(bool continuous) { continuous_ = continuous; }
    bool isSmall() const { return small_; }
    void setSmall(bool small) { small_ = small; }

    double doubleValue() const override { return value_; }
    void setDoubleValue(double value) override;
    std::string stringValue() const override;

    // The height a slider of this size wants.
    void sizeToFit();

private:
    double min_;
    double max_;
    double value_;
    bool continuous_ = true;
    bool small_ = false;
};

} // namespace vexto
