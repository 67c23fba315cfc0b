#pragma once

#include <optional>
#include <string>

namespace quillbrook {

/// The keyboard's input source: a layout or an input method. Main thread only.
class InputSource {
public:
    virtual ~InputSource() = default;

    /// The identifier of the current input source; empty when there is none. macOS:
    /// `kTISPropertyInputSourceID`; Linux: formed from what Fcitx 5, IBus or the keyboard extension
    /// tell, in this order, as of a moment ago.
    virtual std::optional<std::string> currentIdentifier() const = 0;
};

} // namespace quillbrook
