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

    explicit Property(T initial = {}) : state(std::make_shared<State>(std::move(initial))) {}

    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;
    ~Property() { state->isDropped = true; }

    const T& get() const { return state->value; }

    /// An observer may observe and drop meanwhile, the property itself included, which ends the
    /// round.
    void set(T next)
    {
        const auto kept = state; // outlives the property until the round is over
        kept->value = std::move(next);
        std::erase_if(kept->observers, [](const auto& observer) { return observer.expired(); });
        const auto present = kept->observers;
        for (const auto& weakObserver : present) {
            if (kept->isDropped) {
                return;
            }
            if (const auto observer = weakObserver.lock()) {
                (*observer)(kept->value);
            }
        }
    }

    /// Calls `observer` at every assignment from now on, while the subscription lives.
    [[nodiscard]] Subscription observe(Observer observer)
    {
        auto owned = std::make_shared<Observer>(std::move(observer));
        state->observers.push_back(owned);
        return owned;
    }

private:
    struct State {
        explicit State(T initial) : value(std::move(initial)) {}

        T value;
        std::vector<std::weak_ptr<Observer>> observers{};
        bool isDropped = false;
    };

    std::shared_ptr<State> state;
};

} // namespace quillbrook
