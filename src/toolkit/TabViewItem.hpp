#pragma once

#include <memory>
#include <string>

namespace vexto {

class TabView;
class View;

// One tab: an identifier the code finds it by, the label people read, and its content view.
class TabViewItem {
public:
    TabViewItem(std::string identifier, std::string label, std::shared_ptr<View> view)
        : identifier_(std::move(identifier)), label_(std::move(label)), view_(std::move(view))
    {}

    const std::string& identifier() const { return identifier_; }
    const std::string& label() const { return label_; }
    void setLabel(std::string label) { label_ = std::move(label); }
    const std::shared_ptr<View>& view() const { return view_; }
    TabView* tabView() const { return tabView_; }

private:
    friend class TabView;
    std::string identifier_;
    std::string label_;
    std::shared_ptr<View> view_;
    TabView* tabView_ = nullptr;
};

} // namespace vexto
