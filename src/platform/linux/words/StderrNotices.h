#pragma once

#include "platform/Notices.h"
#include "platform/linux/words/Notice.h"

namespace quillbrook {

/// The shell's notices, beside those of the back-end itself.
class StderrNotices final : public Notices {
public:
    void tell(std::string_view text) override { notice(text); }
};

} // namespace quillbrook
