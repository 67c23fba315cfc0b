#include "shell/model/UncaughtException.h"

#include <cxxabi.h>
#include <execinfo.h>

#include <array>
#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

namespace quillbrook {

namespace {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

std::string typeName(const std::type_info& type)
{
    int status = 0;
    const std::unique_ptr<char, FreeMemory> text(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status));
    return status == 0 ? text.get() : type.name();
}

} // namespace

UncaughtException describeUncaughtException()
{
    UncaughtException description;
    if (const std::type_info* type = abi::__cxa_current_exception_type(); type != nullptr) {
        description.name = typeName(*type);
    }
    if (const std::exception_ptr exception = std::current_exception()) {
        try {
            std::rethrow_exception(exception);
        } catch (const std::exception& standard) {
            description.reason = standard.what();
        } catch (...) { // it says nothing of itself
        }
    }
    return description;
}

std::string callStackText()
{
    std::array<void*, 128> addresses{};
    const int count = backtrace(addresses.data(), static_cast<int>(addresses.size()));
    const std::unique_ptr<char*, FreeMemory> symbols(backtrace_symbols(addresses.data(), count));
    std::string text;
    for (int i = 0; symbols && i < count; ++i) {
        text.append(i == 0 ? "" : "\n").append(symbols.get()[i]);
    }
    return text;
}

} // namespace quillbrook
