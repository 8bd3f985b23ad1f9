// Looking into a driver's library for the wide-character functions, as the driver manager does itself. To a
// driver without them the manager hands what the locale can spell, and loses the other letters.
#include "odbc/driver_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace brenvik::odbc {
namespace {

struct LibraryCloser {
    void operator()(void* library) const { dlclose(library); }
};
using Library = std::unique_ptr<void, LibraryCloser>;

// Where the manager looks for a library that is registered by its name alone: where all libraries are looked
// for, then in the folder of drivers beside the manager, then beside the manager itself.
std::vector<std::string> PlacesOf(const std::string& library) {
    std::vector<std::string> places = {library};
    Dl_info manager{};
    if (library.find('/') == std::string::npos &&
        dladdr(dlsym(RTLD_DEFAULT, "SQLAllocHandle"), &manager) != 0 && manager.dli_fname != nullptr) {
        const std::filesystem::path folder = std::filesystem::path(manager.dli_fname).parent_path();
        places.push_back((folder / "odbc" / library).string());
        places.push_back((folder / library).string());
    }
    return places;
}

}  // namespace

TextCalls CallsOf(std::string_view library) {
    if (library.empty()) return TextCalls::Wide;
    for (const std::string& place : PlacesOf(std::string(library))) {
        const Library loaded(dlopen(place.c_str(), RTLD_LAZY | RTLD_LOCAL));
        if (!loaded) continue;
        // A driver may be linked with the manager, whose functions don't count for the driver's.
        void* connect = dlsym(loaded.get(), "SQLDriverConnectW");
        const bool isItsOwn = connect != nullptr && connect != dlsym(RTLD_DEFAULT, "SQLDriverConnectW");
        return isItsOwn ? TextCalls::Wide : TextCalls::Narrow;
    }
    return TextCalls::Wide;
}

}  // namespace brenvik::odbc
