#pragma once

namespace quillbrook {

/// The system's permission to count keys. Main thread only.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    /// Whether the program may count keys. macOS: `AXIsProcessTrusted`; Linux: whether counting is
    /// possible on this display at all.
    virtual bool isTrusted() const = 0;

    /// Lets the system ask the user for the permission. macOS: `AXIsProcessTrustedWithOptions` with
    /// the prompt option; Linux: nothing to ask for.
    virtual void promptForTrust() = 0;
};

} // namespace quillbrook
