#pragma once

namespace quillbrook {

/// Puts right in the environment what names the user's directories. A path that is not absolute
/// means another directory for each working directory and is taken out; a home that is not named is
/// that of the user's account. One notice for each. Before other threads run.
void putDirectoriesRight();

} // namespace quillbrook
