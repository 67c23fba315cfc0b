#pragma once

#include "pages/kit/IconButton.h"

class QImage;

namespace quillbrook {

class UserDefaults;

/// Takes a picture of the page that is on screen and offers what to do with it: to copy it, or to
/// save it as a file. The picture is in memory alone until then.
class ShareScreenshotButton final : public IconButton {
    Q_OBJECT

public:
    /// `defaults` keeps the folder of the last file.
    explicit ShareScreenshotButton(UserDefaults& defaults, QWidget* parent = nullptr);

    /// Does nothing while no window of ours has the keyboard focus.
    void share();

private:
    UserDefaults& defaults;
};

/// The page out of a picture of a window's content, at the same device pixel ratio.
QImage pagePart(const QImage& content);

} // namespace quillbrook
