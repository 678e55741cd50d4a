// A host that knows nothing but the SCC API: loads the provider's library and calls its entries by their names.
#pragma once

#include "CM/scc/scc.h"

#include <array>
#include <map>
#include <string>
#include <vector>

namespace provider_test {

/// The provider's library, loaded once.
class Library {
  public:
    static const Library &instance();
    /// An entry by its name; null if the library doesn't export it.
    [[nodiscard]] void *find(const char *name) const;
    template <class Entry> [[nodiscard]] Entry *entry(const char *name) const {
        return reinterpret_cast<Entry *>(find(name));
    }

  private:
    Library();
    void *handle_;
};

#define SCC_ENTRY(name) (*provider_test::Library::instance().entry<decltype(::name)>(#name))

using Names = std::vector<std::string>;

/// A context with all that a host keeps for it. The destructor ends it.
class Host {
  public:
    /// Initialises a context. The host logs in as `user`, or as whom the provider knows if it is empty.
    explicit Host(std::string user = {});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    [[nodiscard]] void *context() const { return context_; }
    [[nodiscard]] const std::string &name() const { return name_; }
    [[nodiscard]] unsigned long capabilities() const { return static_cast<unsigned long>(capabilities_); }

    /// `project` holds the proposal, and the choice afterwards; so does `isNew`.
    SCCRTN getProjectPath(std::string &project, const std::string &directory, int &isNew);
    SCCRTN open(const std::string &project, const std::string &directory, long flags = 0);
    SCCRTN close();
    /// Picks the project of a directory, which may be made, and opens it. Fails the test if one of both fails.
    void connect(const std::string &project, const std::string &directory);

    SCCRTN get(const Names &files, long flags = 0);
    SCCRTN checkOut(const Names &files, const std::string &comment = "for a change");
    SCCRTN checkIn(const Names &files, const std::string &comment = "a change", long flags = 0);
    SCCRTN undo(const Names &files);
    SCCRTN add(const Names &files, const std::string &comment = "new", std::vector<long> flags = {});
    SCCRTN remove(const Names &files, const std::string &comment = "gone");
    SCCRTN rename(std::string from, std::string to);
    SCCRTN history(const Names &files);
    SCCRTN properties(std::string file);
    SCCRTN diff(std::string file);
    SCCRTN query(const Names &files, std::vector<long> &status);
    /// The status of one file; fails the test if the query fails.
    long status(const std::string &file);
    SCCRTN setOption(long option, long value);

    /// What SccPopulateList has reported: names with their statuses, and how often the callback was called.
    struct Listing {
        std::map<std::string, long> added;
        std::map<std::string, long> dropped;
        int calls = 0;
        int stopAfter = 0; ///< the callback answers "stop" from this call on; 0 never
    };
    SCCRTN list(SCCCOMMAND command, const Names &names, Listing &listing, long flags = 0,
                std::vector<long> *status = nullptr);

    /// The text that the provider has written, a line each, and their kinds.
    static std::string text();
    static const std::vector<unsigned long> &kinds();
    static void forgetText();
    /// The text output function answers "cancel" from this call on, counted from now; 0 for never.
    static void cancelAfter(int calls);

  private:
    void *context_ = nullptr;
    std::string user_;
    std::string name_;
    long capabilities_ = 0;
};

} // namespace provider_test
