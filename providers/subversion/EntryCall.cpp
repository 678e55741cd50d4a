#include "providers/subversion/EntryCall.h"

#include "providers/subversion/BrokenPipe.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>

namespace svnscc {

namespace {

/// The contexts of all hosts in the process, so that a stale pointer is recognised.
class Contexts {
  public:
    Context *add() {
        auto context = std::make_unique<Context>();
        Context *const address = context.get();
        const std::scoped_lock lock(mutex_);
        contexts_.emplace(address, std::move(context));
        return address;
    }
    void remove(void *address) {
        std::unique_ptr<Context> ended;
        const std::scoped_lock lock(mutex_);
        if (const auto found = contexts_.find(address); found != contexts_.end()) {
            ended = std::move(found->second);
            contexts_.erase(found);
        }
    }
    Context *find(void *address) {
        const std::scoped_lock lock(mutex_);
        const auto found = contexts_.find(address);
        return found != contexts_.end() ? found->second.get() : nullptr;
    }

  private:
    std::mutex mutex_;
    std::unordered_map<void *, std::unique_ptr<Context>> contexts_;
};

Contexts &contexts() {
    static auto *const all = new Contexts; // outlives every host's static objects
    return *all;
}

SCCRTN report(Output &output, const Failure &failure) {
    if (failure.result() == SCC_I_OPERATIONCANCELED) {
        output.info("Cancelled.");
    } else {
        output.error(failure.text());
    }
    return failure.result();
}

/// Runs `work` and turns what it throws into a result.
SCCRTN guarded(Output &output, const std::function<SCCRTN()> &work) noexcept {
    const BrokenPipe pipe;
    try {
        try {
            return work();
        } catch (const Failure &failure) {
            return report(output, failure);
        } catch (const std::bad_alloc &) {
            return report(output, Failure(SCC_E_NONSPECIFICERROR, "Out of memory."));
        } catch (const std::exception &error) {
            return report(output, Failure(SCC_E_NONSPECIFICERROR, error.what()));
        }
    } catch (...) {
        return SCC_E_NONSPECIFICERROR; // the host's text output function has thrown, or there is no memory for a
                                       // text
    }
}

/// Tells the host where an operation begins and ends.
class Operation {
  public:
    explicit Operation(Output &output) : output_(output) { output_.begin(); }
    ~Operation() { output_.end(); }
    Operation(const Operation &) = delete;
    Operation &operator=(const Operation &) = delete;

  private:
    Output &output_;
};

} // namespace

Context *createContext() noexcept {
    Output standardError;
    Context *context = nullptr;
    guarded(standardError, [&] {
        context = contexts().add();
        return SCC_OK;
    });
    return context;
}

void releaseContext(void *context) noexcept {
    Output standardError;
    guarded(standardError, [&] {
        contexts().remove(context);
        return SCC_OK;
    });
}

SCCRTN runWithContext(void *context, const ContextWork &work) noexcept {
    Context *const known = contexts().find(context);
    if (known == nullptr) {
        return SCC_E_NONSPECIFICERROR;
    }
    return guarded(known->output(), [&] { return work(*known); });
}

SCCRTN runInProject(void *context, const ProjectWork &work) noexcept {
    return runWithContext(context, [&](Context &known) {
        static_cast<void>(known.project());
        const Operation operation(known.output());
        // Reported within the operation, as the host expects it.
        return guarded(known.output(), [&] {
            Client client(known);
            return work(client);
        });
    });
}

SCCRTN runWithFiles(void *context, long count, char **files, const FilesWork &work) noexcept {
    return runInProject(context, [&](Client &client) -> SCCRTN {
        const Names names = namesFrom(count, files);
        return names.empty() ? SCC_OK : work(client, names);
    });
}

Names namesFrom(long count, char **files) {
    if (count < 0 || (count > 0 && files == nullptr)) {
        throw Failure(SCC_E_NONSPECIFICERROR, "The list of files is missing.");
    }
    Names names;
    names.reserve(static_cast<std::size_t>(count));
    for (long i = 0; i < count; ++i) {
        names.push_back(internalPath(files[i]));
    }
    return names;
}

} // namespace svnscc
