// Measures running a trivial program through the tool shell, against sh -c of the same command, with little and
// with much memory resident in this process.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMToolShellInterface.h"

#include <cstddef>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <sys/mman.h>

namespace bench {

namespace {

constexpr const char *command = "/bin/echo done";

// Keeps memory resident while it lives, in pages of the ordinary size, which are the most expensive to copy.
class Resident {
  public:
    explicit Resident(std::size_t bytes)
        : bytes_(bytes),
          memory_(::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (memory_ == MAP_FAILED) {
            throw std::runtime_error("no memory for the run with much memory resident");
        }
        ::madvise(memory_, bytes_, MADV_NOHUGEPAGE);
        std::memset(memory_, 1, bytes_);
    }
    ~Resident() { ::munmap(memory_, bytes_); }
    Resident(const Resident &) = delete;
    Resident &operator=(const Resident &) = delete;

  private:
    std::size_t bytes_;
    void *memory_;
};

// Provides the output window that a real program has.
class Window {
  public:
    Window() { getMainCMOutputer()() = &text_; }
    ~Window() { getMainCMOutputer()() = nullptr; }
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

  private:
    std::ostringstream text_;
};

double executeAll(int times) {
    const Window window;
    return secondsOf([times] {
        for (int at = 0; at < times; ++at) {
            CString output;
            CString error;
            if (theCMToolShellInterface()->Execute(command, output, error, "") != 1 || output != "done\n") {
                throw std::runtime_error("the program was not run: " + error.str());
            }
        }
    });
}

} // namespace

bool runPrograms(const Setting &setting) {
    const OpenProject open(makeProject(setting.scratch / "execute", 10, {}));
    const int times = setting.scaled(1000);
    const std::string what = "run a program " + std::to_string(times) + " times";
    const auto ours = [times] { return executeAll(times); };
    const auto peer = [times] {
        return secondsOf([times] {
            for (int at = 0; at < times; ++at) {
                runPeer({"/bin/sh", "-c", command});
            }
        });
    };
    const Row row = timedRow(what + " / posix_spawn of sh -c", measurePaired(setting.runs, ours, peer), 0.7);
    print(row);

    const auto bytes = static_cast<std::size_t>(setting.scaled(2048)) << 20;
    const auto large = [times, bytes] {
        const Resident memory(bytes);
        return executeAll(times);
    };
    const Row largeRow = timedRow(what + ", " + std::to_string(bytes >> 20) + " MiB resident / little memory",
                                  measurePaired(setting.runs, large, ours), 1.2);
    print(largeRow);
    return row.ok() && largeRow.ok();
}

} // namespace bench
