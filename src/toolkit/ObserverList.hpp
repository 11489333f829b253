#pragma once

#include <functional>
#include <vector>

namespace vexto {

// Callbacks that a model object calls when it changes, so that a front can mirror it without
// polling. Removing an observer while callbacks run is safe.
template <typename... Args> class ObserverList {
public:
    using Token = int;

    Token add(std::function<void(Args...)> callback)
    {
        entries_.push_back({++lastToken_, std::move(callback)});
        return lastToken_;
    }

    void remove(Token token)
    {
        for (auto& entry : entries_) {
            if (entry.token == token) {
                entry.callback = nullptr;
            }
        }
        if (depth_ == 0) {
            compact();
        }
    }

    void notify(Args... args)
    {
        ++depth_;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            if (auto callback = entries_[i].callback) {
                callback(args...);
            }
        }
        if (--depth_ == 0) {
            compact();
        }
    }

    bool empty() const { return entries_.empty(); }

private:
    struct Entry {
        Token token;
        std::function<void(Args...)> callback;
    };

    void compact()
    {
        std::erase_if(entries_, [](const Entry& e) { return !e.callback; });
    }

    std::vector<Entry> entries_;
    Token lastToken_ = 0;
    int depth_ = 0;
};

} // namespace vexto
