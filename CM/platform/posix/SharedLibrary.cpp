#include "CM/platform/SharedLibrary.h"

#include "CM/platform/posix/NativePath.h"

#include <dlfcn.h>
#include <utility>

namespace platform {

SharedLibrary::~SharedLibrary() { unload(); }

SharedLibrary::SharedLibrary(SharedLibrary &&other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary &SharedLibrary::operator=(SharedLibrary &&other) noexcept {
    if (this != &other) {
        unload();
        handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
}

bool SharedLibrary::load(const CString &path, CString &error) {
    unload();
    const std::string native = posix::nativePath(path);
    if (native.empty()) {
        error = "a library needs a name"; // the loader takes the empty name for this program itself
        return false;
    }
    handle_ = ::dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char *reason = ::dlerror();
        error = reason == nullptr ? path + " can't be loaded" : CString(reason);
    }
    return isLoaded();
}

void SharedLibrary::unload() {
    if (void *handle = std::exchange(handle_, nullptr)) {
        ::dlclose(handle);
    }
}

void *SharedLibrary::entry(const char *name) const {
    return handle_ == nullptr || name == nullptr ? nullptr : ::dlsym(handle_, name);
}

} // namespace platform
