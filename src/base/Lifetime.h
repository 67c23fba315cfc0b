#pragma once

#include <memory>
#include <utility>

namespace quillbrook {

/// A member of an object that timers, observers and background work may outlive: what it wraps
/// does nothing once the object is gone. It is declared last, so that it ends first.
class Lifetime {
public:
    /// Tells from any thread whether the object is still there.
    class Watch {
    public:
        explicit Watch(std::weak_ptr<const char> life) : life(std::move(life)) {}

        bool isOver() const { return life.expired(); }

    private:
        std::weak_ptr<const char> life;
    };

    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;

    Watch watch() const { return Watch(life); }

    /// `body`, which runs only while the object is there. To be called on the thread on which the
    /// object ends.
    template <typename Body>
    auto whileAlive(Body body) const
    {
        return [watch = watch(), body = std::move(body)] {
            if (!watch.isOver()) {
                body();
            }
        };
    }

private:
    std::shared_ptr<const char> life = std::make_shared<const char>();
};

} // namespace quillbrook
