// Defines the options that every command has.
#pragma once

#include <string>

namespace orchard_cm {

/// How the program answers the questions of an operation.
enum class Answer {
    ask,      ///< ask the user on the terminal; without one give the safe answer, No, and report it
    yes,      ///< --yes: Yes to each question
    no,       ///< --no: No to each question
    yesToAll, ///< --yes-to-all: one Yes that holds for the rest of the command
};

struct GlobalOptions {
    std::string project; ///< -p: the project file; empty: the one of the current directory
    bool json = false;
    Answer answer = Answer::ask;
    bool trace = false;      ///< --trace: the debug trace
    std::string logFile;     ///< --log: what the operations log; empty: nowhere
    unsigned wait = 30;      ///< --wait: for other programs that change the project, in seconds
    std::string commandLine; ///< as somebody reads it who waits for this program
};

} // namespace orchard_cm
