#pragma once

#include <QCoreApplication>

#include <array>

namespace quillbrook {

/// The application object that Qt's event loop wants, one for all inputs of a target.
class FuzzApplication {
private:
    int argumentCount = 1;
    std::array<char, 5> name{"fuzz"};
    std::array<char*, 2> arguments{name.data(), nullptr};
    QCoreApplication application{argumentCount, arguments.data()};
};

} // namespace quillbrook
