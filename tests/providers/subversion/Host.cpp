#include "tests/providers/subversion/Host.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <stdexcept>

/// Leaves out what the Subversion libraries keep until the process ends, which they refer to from memory that the
/// leak check doesn't look at.
/// Is exported, so that the sanitizer's runtime, which is a library of its own, finds it.
extern "C" __attribute__((visibility("default"))) const char *
__lsan_default_suppressions();                         // NOLINT(bugprone-reserved-identifier)
extern "C" const char *__lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
    return "leak:apr_allocator_create\n";
}

namespace provider_test {

namespace {

std::string written; // by the text output function, which has no context
std::vector<unsigned long> writtenKinds;
int callsUntilCancel = 0;

long writeText(char const *text, unsigned long kind) {
    writtenKinds.push_back(kind);
    if (kind <= SCC_MSG_STATUS) {
        written += text;
        written += '\n';
    }
    return callsUntilCancel > 0 && --callsUntilCancel == 0 ? (callsUntilCancel = 1, SCC_MSG_RTN_CANCEL)
                                                           : SCC_MSG_RTN_OK;
}

/// A list of names as the API passes it.
class Array {
  public:
    explicit Array(const Names &names) : names_(names) {
        for (std::string &name : names_) {
            pointers_.push_back(name.data());
        }
    }
    char **data() { return pointers_.data(); }
    [[nodiscard]] long size() const { return static_cast<long>(pointers_.size()); }

  private:
    Names names_;
    std::vector<char *> pointers_;
};

/// A buffer for a text, with zeros behind it.
template <std::size_t size> std::array<char, size> buffer(const std::string &text) {
    std::array<char, size> result{};
    text.copy(result.data(), size - 1);
    return result;
}

} // namespace

const Library &Library::instance() {
    static const Library library;
    return library;
}

Library::Library() : handle_(::dlopen(PROVIDER_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
        throw std::runtime_error(::dlerror());
    }
}

void *Library::find(const char *name) const { return ::dlsym(handle_, name); }

Host::Host(std::string user) : user_(std::move(user)) {
    forgetText();
    cancelAfter(0);
    auto caller = buffer<16>("A host");
    auto name = buffer<SCC_NAME_LEN + 1>("");
    auto label = buffer<SCC_AUXLABEL_LEN + 1>("");
    unsigned long checkOutLength = 0;
    unsigned long length = 0;
    EXPECT_EQ(SCC_OK, SCC_ENTRY(SccInitialize)(&context_, nullptr, caller.data(), name.data(), &capabilities_,
                                               label.data(), &checkOutLength, &length));
    name_ = name.data();
}

Host::~Host() { SCC_ENTRY(SccUninitialize)(context_); }

SCCRTN Host::getProjectPath(std::string &project, const std::string &directory, int &isNew) {
    auto user = buffer<SCC_USER_LEN + 1>(user_);
    auto name = buffer<SCC_PRJPATH_LEN + 1>(project);
    auto aux = buffer<SCC_PRJPATH_LEN + 1>("");
    std::vector<char> path(4096);
    directory.copy(path.data(), path.size() - 1);
    const SCCRTN result =
        SCC_ENTRY(SccGetProjPath)(context_, nullptr, user.data(), name.data(), path.data(), aux.data(), 0, &isNew);
    EXPECT_EQ(directory, path.data());
    project = name.data();
    return result;
}

SCCRTN Host::open(const std::string &project, const std::string &directory, long flags) {
    auto user = buffer<SCC_USER_LEN + 1>(user_);
    auto name = buffer<SCC_PRJPATH_LEN + 1>(project);
    auto aux = buffer<SCC_PRJPATH_LEN + 1>("");
    auto comment = buffer<32>("a new project");
    std::vector<char> path(4096);
    directory.copy(path.data(), path.size() - 1);
    return SCC_ENTRY(SccOpenProject)(context_, nullptr, user.data(), name.data(), path.data(), aux.data(),
                                     comment.data(), writeText, flags);
}

SCCRTN Host::close() { return SCC_ENTRY(SccCloseProject)(context_); }

void Host::connect(const std::string &project, const std::string &directory) {
    std::string name = project;
    int isNew = 1;
    ASSERT_EQ(SCC_OK, getProjectPath(name, directory, isNew));
    ASSERT_EQ(SCC_OK, open(name, directory)) << text();
}

SCCRTN Host::get(const Names &files, long flags) {
    Array names(files);
    return SCC_ENTRY(SccGet)(context_, nullptr, names.size(), names.data(), flags, nullptr);
}

SCCRTN Host::checkOut(const Names &files, const std::string &comment) {
    Array names(files);
    std::string text = comment;
    return SCC_ENTRY(SccCheckout)(context_, nullptr, names.size(), names.data(), text.data(), 0, nullptr);
}

SCCRTN Host::checkIn(const Names &files, const std::string &comment, long flags) {
    Array names(files);
    std::string text = comment;
    return SCC_ENTRY(SccCheckin)(context_, nullptr, names.size(), names.data(), text.data(), flags, nullptr);
}

SCCRTN Host::undo(const Names &files) {
    Array names(files);
    return SCC_ENTRY(SccUncheckout)(context_, nullptr, names.size(), names.data(), 0, nullptr);
}

SCCRTN Host::add(const Names &files, const std::string &comment, std::vector<long> flags) {
    Array names(files);
    std::string text = comment;
    flags.resize(files.size());
    return SCC_ENTRY(SccAdd)(context_, nullptr, names.size(), names.data(), text.data(), flags.data(), nullptr);
}

SCCRTN Host::remove(const Names &files, const std::string &comment) {
    Array names(files);
    std::string text = comment;
    return SCC_ENTRY(SccRemove)(context_, nullptr, names.size(), names.data(), text.data(), 0, nullptr);
}

SCCRTN Host::rename(std::string from, std::string to) {
    return SCC_ENTRY(SccRename)(context_, nullptr, from.data(), to.data());
}

SCCRTN Host::history(const Names &files) {
    Array names(files);
    return SCC_ENTRY(SccHistory)(context_, nullptr, names.size(), names.data(), 0, nullptr);
}

SCCRTN Host::properties(std::string file) { return SCC_ENTRY(SccProperties)(context_, nullptr, file.data()); }

SCCRTN Host::diff(std::string file) { return SCC_ENTRY(SccDiff)(context_, nullptr, file.data(), 0, nullptr); }

SCCRTN Host::query(const Names &files, std::vector<long> &status) {
    Array names(files);
    status.assign(files.size(), 12345);
    return SCC_ENTRY(SccQueryInfo)(context_, names.size(), names.data(), status.data());
}

long Host::status(const std::string &file) {
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, query({file}, status)) << text();
    return status.front();
}

SCCRTN Host::setOption(long option, long value) { return SCC_ENTRY(SccSetOption)(context_, option, value); }

SCCRTN Host::list(SCCCOMMAND command, const Names &names, Listing &listing, long flags,
                  std::vector<long> *status) {
    Array array(names);
    const POPLISTFUNC take = [](void *data, int add, long bits, char const *file) {
        auto &taken = *static_cast<Listing *>(data);
        (add != 0 ? taken.added : taken.dropped)[file] = bits;
        ++taken.calls;
        return taken.stopAfter > 0 && taken.calls >= taken.stopAfter ? 0 : 1;
    };
    std::vector<long> words(names.size() + 1, 12345);
    const SCCRTN result = SCC_ENTRY(SccPopulateList)(context_, command, array.size(), array.data(), take, &listing,
                                                     words.data(), flags);
    EXPECT_EQ(12345, words.back()) << "written behind the array";
    if (status != nullptr) {
        words.pop_back();
        *status = words;
    }
    return result;
}

std::string Host::text() { return written; }
const std::vector<unsigned long> &Host::kinds() { return writtenKinds; }

void Host::forgetText() {
    written.clear();
    writtenKinds.clear();
}

void Host::cancelAfter(int calls) { callsUntilCancel = calls; }

} // namespace provider_test
