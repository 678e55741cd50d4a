// The works that are measured, each in a source file of its own.
#pragma once

#include "bench/Measure.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

struct Setting {
    std::filesystem::path scratch; ///< a directory of this run's own, taken away at its end
    std::filesystem::path sources; ///< where the peers' programs stand
    std::filesystem::path self;    ///< this program
    int runs = 5;                  ///< pairs of runs that the medians are taken of
    double scale = 1;              ///< of the number of units, lines and runs, for trying out

    [[nodiscard]] int scaled(int number) const;
};

/// Each prints its rows as they come; false if a bar was missed.
bool expandCommandLines(const Setting &setting);
bool runPrograms(const Setting &setting);
bool checkOutUnits(const Setting &setting);
bool openModel(const Setting &setting);
bool prepareCheckOut(const Setting &setting);
bool listArchive(const Setting &setting);
bool checkInUnits(const Setting &setting);
bool listWorkspace(const Setting &setting);

/// The child's side of openModel: opens the project and prints the seconds that it took and by how many bytes the
/// largest resident size grew.
int openOnce(const std::string &projectFile);
/// The child's side of listArchive: lists (arguments: project file, tool, text) and prints by how many bytes the
/// largest resident size grew.
int listOnce(const std::vector<std::string> &arguments);

} // namespace bench
