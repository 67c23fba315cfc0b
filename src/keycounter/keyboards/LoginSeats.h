#pragma once

#include "keycounter/keyboards/Seats.h"

namespace quillbrook {

/// What logind says, which it keeps in files of its own: asking takes no conversation, and the
/// answer is never old.
class LoginSeats final : public Seats {
public:
    std::optional<uid_t> activeUser(const std::string& seat) const override;
    bool isActive(uid_t user) const override;
    bool isPresent(uid_t user) const override;
    bool areKnown() const override;
};

} // namespace quillbrook
