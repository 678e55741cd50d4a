// Declares the benchmarks, each of which has its own source file.
#pragma once

#include "bench/Measure.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

struct Setting {
    std::filesystem::path scratch; ///< a directory for this run, removed at its end
    std::filesystem::path sources; ///< the directory of the peers' programs
    std::filesystem::path self;    ///< this program
    int runs = 5;                  ///< number of pairs of runs for a median
    double scale = 1;              ///< factor for the numbers of units, lines and runs, for quick tries

    [[nodiscard]] int scaled(int number) const;
};

/// Each function prints its rows as they are measured, and returns false if a limit was exceeded.
bool expandCommandLines(const Setting &setting);
bool runPrograms(const Setting &setting);
bool checkOutUnits(const Setting &setting);
bool openModel(const Setting &setting);
bool prepareCheckOut(const Setting &setting);
bool listArchive(const Setting &setting);
bool checkInUnits(const Setting &setting);
bool listWorkspace(const Setting &setting);

/// Runs in the child of openModel: opens the project, and prints the seconds taken and the growth of the largest
/// resident size in bytes.
int openOnce(const std::string &projectFile);
/// Runs in the child of listArchive: lists the archive (arguments: project file, tool, text), and prints the
/// growth of the largest resident size in bytes.
int listOnce(const std::vector<std::string> &arguments);

} // namespace bench
