#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quillbrook {

/// Keeps an observer of a property alive; whoever drops it observes no longer.
using Subscription = std::shared_ptr<void>;

/// A value that tells its observers of every assignment, equal values included.
/// Main thread only.
template <typename T>
class Property {
public:
    using Observer = std::function<void(const T&)>;

    explicit Property(T initial = {}) : value(std::move(initial)) {}

    const T& get() const { return value; }

    void set(T next)
    {
        value = std::move(next);
        std::erase_if(observers, [](const auto& observer) { return observer.expired(); });
        const auto present = observers; // an observer may add or drop observers
        for (const auto& weakObserver : present) {
            if (const auto observer = weakObserver.lock()) {
                (*observer)(value);
            }
        }
    }

    /// Calls `observer` at every assignment from now on, while the subscription lives.
    [[nodiscard]] Subscription observe(Observer observer)
    {
        auto owned = std::make_shared<Observer>(std::move(observer));
        observers.push_back(owned);
        return owned;
    }

private:
    T value;
    std::vector<std::weak_ptr<Observer>> observers{};
};

} // namespace quillbrook
