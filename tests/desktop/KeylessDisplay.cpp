// Loaded before a program: its display has none of the extensions by which keys can be counted.

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <dlfcn.h>

#include <string_view>

extern "C" const xcb_query_extension_reply_t* xcb_get_extension_data(
    xcb_connection_t* connection, xcb_extension_t* extension)
{
    static const xcb_query_extension_reply_t kMissing{};
    const std::string_view name = extension->name;
    if (name == "XInputExtension" || name == "RECORD") {
        return &kMissing;
    }
    using GetExtensionData
        = const xcb_query_extension_reply_t* (*)(xcb_connection_t*, xcb_extension_t*);
    static const auto next
        = reinterpret_cast<GetExtensionData>(dlsym(RTLD_NEXT, "xcb_get_extension_data"));
    return next(connection, extension);
}
