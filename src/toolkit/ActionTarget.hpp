#pragma once

#include "toolkit/ActionSender.hpp"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace vexto {

// The receiver of a control's action: answers whether it handles a selector ("changeFont:")
// and performs it with the sender.
class ActionTarget {
public:
    virtual ~ActionTarget() = default;
    virtual bool respondsToSelector(std::string_view selector) const = 0;
    virtual void performAction(std::string_view selector, const ActionSender& sender) = 0;
};

// A target built from a table of handlers, for objects that dispatch their actions by name.
class ActionTable : public ActionTarget {
public:
    using Handler = std::function<void(const ActionSender& sender)>;

    void on(std::string selector, Handler handler)
    {
        handlers_[std::move(selector)] = std::move(handler);
    }

    bool respondsToSelector(std::string_view selector) const override
    {
        return handlers_.find(selector) != handlers_.end();
    }

    void performAction(std::string_view selector, const ActionSender& sender) override
    {
        if (auto found = handlers_.find(selector); found != handlers_.end()) {
            found->second(sender);
        }
    }

private:
    std::map<std::string, Handler, std::less<>> handlers_;
};

} // namespace vexto
