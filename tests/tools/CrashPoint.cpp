// Loaded into orchard-cm before the C library: ends it before the call number CRASH_AT that changes a directory or
// starts a program. The tools that it runs are not touched.
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <errno.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void countCall() {
    static const char *const number = std::strcmp(program_invocation_short_name, "orchard-cm") == 0
                                          ? std::getenv("CRASH_AT")
                                          : nullptr;
    static long left = number == nullptr ? -1 : std::atol(number);
    if (left == 0) {
        ::_exit(77);
    }
    left -= left > 0 ? 1 : 0;
}

template <class FUNCTION> FUNCTION *next(const char *name) {
    return reinterpret_cast<FUNCTION *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {
__attribute__((visibility("default"))) int renameat2(int oldDirectory, const char *from, int newDirectory,
                                                     const char *to, unsigned flags) noexcept {
    countCall();
    return next<int(int, const char *, int, const char *, unsigned)>("renameat2")(oldDirectory, from, newDirectory,
                                                                                to, flags);
}
__attribute__((visibility("default"))) int rename(const char *from, const char *to) noexcept {
    countCall();
    return next<int(const char *, const char *)>("rename")(from, to);
}
__attribute__((visibility("default"))) int unlink(const char *path) noexcept {
    countCall();
    return next<int(const char *)>("unlink")(path);
}
__attribute__((visibility("default"))) int mkdir(const char *path, mode_t mode) noexcept {
    countCall();
    return next<int(const char *, mode_t)>("mkdir")(path, mode);
}
__attribute__((visibility("default"))) int mkostemp(char *pattern, int flags) {
    countCall();
    return next<int(char *, int)>("mkostemp")(pattern, flags);
}
__attribute__((visibility("default"))) int pipe2(int ends[2], int flags) noexcept {
    countCall();
    return next<int(int *, int)>("pipe2")(ends, flags);
}
}
