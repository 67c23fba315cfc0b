#pragma once

namespace quillbrook {
class VirtualBundleValues;
}

namespace quillbrook::lab {

class Arguments;

/// Lets the machine's package say what `--version` and `--build-date` tell, and what was built
/// where these are missing.
void setBundleValues(const Arguments& arguments, VirtualBundleValues& bundleValues);

/// Ends the program when one of them was given.
void rejectBundleValues(const Arguments& arguments);

/// `page` for the about panel.
int aboutPanelPage(const Arguments& arguments);

} // namespace quillbrook::lab
