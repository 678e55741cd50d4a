// Compares the library and the reference host with their peers, and prints a row for each benchmark. Exits with 1
// if a limit is exceeded, 2 on wrong usage, 3 if a benchmark could not run.
//   orc_bench [--runs N] [--scale X] [WORK...]     works: expand, run, checkout, checkin, open, prepare, list,
//   workspace; without one, all
#include "bench/Works.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace bench {

namespace {

struct Work {
    const char *name;
    bool (*run)(const Setting &setting);
};
constexpr Work works[] = {{"expand", expandCommandLines}, {"run", runPrograms},
                          {"checkout", checkOutUnits},    {"open", openModel},
                          {"prepare", prepareCheckOut},   {"list", listArchive},
                          {"checkin", checkInUnits},      {"workspace", listWorkspace}};

// Provides a directory for one run of the program, and removes it.
class Scratch {
  public:
    Scratch() {
        std::string name = (fs::temp_directory_path() / "orc_bench.XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("can't make a directory below " + fs::temp_directory_path().string());
        }
        path_ = name;
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;
    [[nodiscard]] const fs::path &path() const { return path_; }

  private:
    fs::path path_;
};

bool measure(Setting setting, const std::vector<std::string> &names) {
    const Scratch scratch;
    setting.scratch = scratch.path();
    setting.self = fs::read_symlink("/proc/self/exe");
    setting.sources = ORC_BENCH_SOURCES;
    // Use the property sets of this tree, not the user's own.
    ::setenv("ORCHARD_SHARE", (setting.sources.parent_path() / "share").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", scratch.path().c_str(), 1);
    printHead();
    bool ok = true;
    for (const Work &work : works) {
        if (names.empty() || std::ranges::find(names, work.name) != names.end()) {
            ok = work.run(setting) && ok;
        }
    }
    return ok;
}

} // namespace

int Setting::scaled(int number) const { return std::max(10, static_cast<int>(std::lround(number * scale))); }

} // namespace bench

int main(int argc, char **argv) {
    try {
        bench::Setting setting;
        std::vector<std::string> names;
        std::vector<std::string> known;
        for (const bench::Work &work : bench::works) {
            known.emplace_back(work.name);
        }
        std::string toOpen;
        std::vector<std::string> toList;
        CLI::App app("Measures the works of the library and the reference host against their peers.");
        app.add_option("--runs", setting.runs, "pairs of runs that the medians are taken of")
            ->check(CLI::Range(1, 1000));
        app.add_option("--scale", setting.scale, "of the numbers of units, lines and runs")
            ->check(CLI::Range(0.001, 10.0));
        app.add_option("work", names, "what to measure; everything if left out")->check(CLI::IsMember(known));
        app.add_option("--open-once", toOpen)->group("");
        app.add_option("--list-once", toList)->expected(3)->group("");
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError &error) {
            return app.exit(error) == 0 ? 0 : 2;
        }
        if (!toOpen.empty()) {
            return bench::openOnce(toOpen);
        }
        if (!toList.empty()) {
            return bench::listOnce(toList);
        }
        return bench::measure(setting, names) ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "orc_bench: %s\n", error.what());
        return 3;
    }
}
