#pragma once

#include "platform/Directories.h"

namespace quillbrook {

/// The user's directories as Qt Core finds them.
class QtDirectories final : public Directories {
public:
    std::optional<std::filesystem::path> dataDirectory() const override;
};

} // namespace quillbrook
