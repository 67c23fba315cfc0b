#pragma once

#include <QApplication>
#include <QByteArray>

#include <array>
#include <optional>
#include <string>
#include <string_view>

class QPixmap;

namespace quillbrook::lab {

class Arguments;

/// Qt without a screen, in the appearance (`--dark`) and at the scale (`--scale`) that the
/// arguments ask for. Ends the program when the scale is none.
class OffscreenQt {
public:
    explicit OffscreenQt(const Arguments& arguments);

    OffscreenQt(const OffscreenQt&) = delete;
    OffscreenQt& operator=(const OffscreenQt&) = delete;

private:
    int count = 1;
    std::string name = "quillbrook-lab";
    std::array<char*, 2> values{name.data(), nullptr};
    std::optional<QApplication> application{};
};

/// The time that `--now` gives, else the real one.
double nowOf(const Arguments& arguments);

/// Write what was asked for under that option, or nothing. End the program when they can't.
void writePicture(const Arguments& arguments, const QPixmap& picture);
void writeText(const Arguments& arguments, std::string_view option, const QByteArray& text);

} // namespace quillbrook::lab
