// Tests that a rename, move or delete that the archive refuses leaves model, files and archive as they were, and
// that the same command works once nothing refuses it.
#include "tests/tools/scenario/ScenarioProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace fs = std::filesystem;
using scenario::Project;
using testing::HasSubstr;
using tools::quoted;
using tools::Ran;

namespace {

using Command = std::pair<std::vector<std::string>, std::vector<std::string>>;

/// A way in which an archive refuses changes.
struct Refusal {
    const char *tool;
    const char *name;
    /// Shell commands in the directory of the project file; $ARCHIVE is the archive. Empty for a colleague who has
    /// locked the files.
    const char *refuse;
    const char *accept;
};

const Refusal refusals[] = {
    {"Git", "GitOwnHook",
     "printf '#!/bin/sh\\nexit 1\\n' >.git/hooks/pre-commit && chmod +x .git/hooks/pre-commit",
     "rm .git/hooks/pre-commit"},
    {"Git", "GitSharedRepository",
     "printf '#!/bin/sh\\nexit 1\\n' >\"$ARCHIVE/hooks/pre-receive\" && chmod +x \"$ARCHIVE/hooks/pre-receive\"",
     "rm \"$ARCHIVE/hooks/pre-receive\""},
    {"Mercurial", "MercurialOwnHook",
     "cp .hg/hgrc .hg/saved && printf '[hooks]\\npretxncommit.no = false\\n' >>.hg/hgrc", "mv .hg/saved .hg/hgrc"},
    {"Mercurial", "MercurialSharedRepository",
     "printf '[hooks]\\npretxnchangegroup.no = false\\n' >\"$ARCHIVE/.hg/hgrc\"", "rm \"$ARCHIVE/.hg/hgrc\""},
    {"Subversion", "SubversionHook",
     "printf '#!/bin/sh\\nexit 1\\n' >\"$ARCHIVE/hooks/pre-commit\" && chmod +x \"$ARCHIVE/hooks/pre-commit\"",
     "rm \"$ARCHIVE/hooks/pre-commit\""},
    {"Subversion", "SubversionLock", "", ""},
    {"CVS", "CvsHook",
     "chmod u+w \"$ARCHIVE/CVSROOT/commitinfo\" && echo 'ALL false %p' >\"$ARCHIVE/CVSROOT/commitinfo\"",
     ": >\"$ARCHIVE/CVSROOT/commitinfo\""},
    {"CVS", "CvsEditor", "", ""},
    {"RCS", "RcsLock", "", ""},
    // The group is that of the tool's processes.
    {"Git", "GitEnded",
     "printf '#!/bin/sh\\nkill -TERM 0\\n' >\"$ARCHIVE/hooks/pre-receive\" && chmod +x "
     "\"$ARCHIVE/hooks/pre-receive\"",
     "rm \"$ARCHIVE/hooks/pre-receive\""},
    {"Subversion", "SubversionEnded",
     "printf '#!/bin/sh\\nkill -TERM 0\\n' >\"$ARCHIVE/hooks/pre-commit\" && chmod +x "
     "\"$ARCHIVE/hooks/pre-commit\"",
     "rm \"$ARCHIVE/hooks/pre-commit\""},
    {"Mercurial", "MercurialEnded",
     "printf '[hooks]\\npretxnchangegroup.no = kill -TERM 0\\n' >\"$ARCHIVE/.hg/hgrc\"",
     "rm \"$ARCHIVE/.hg/hgrc\""},
    {"CVS", "CvsEnded",
     "chmod u+w \"$ARCHIVE/CVSROOT/commitinfo\" && echo 'ALL kill -TERM 0 %p' >\"$ARCHIVE/CVSROOT/commitinfo\"",
     ": >\"$ARCHIVE/CVSROOT/commitinfo\""},
};

struct Refused : testing::TestWithParam<Refusal> {
    Refused() : project(GetParam().tool, {}) {}

    void SetUp() override {
        project.setEnvironment("ARCHIVE", archive.archive());
        good({"connect"},
             archive.archive().empty() ? std::vector<std::string>{} : std::vector<std::string>{archive.archive()});
        good({"add", "--log", "first", "--recursive"}, {"station"});
        good({"checkout", "--lock"}, {"station", "Drives", "Control", "Operator", "Valve"});
        project.edit("Valve.ocl", "<description>", "<description>Not checked in. ");
        if (!byColleague()) {
            good({"checkout", "--lock"}, {"Pump"});
            project.edit("Pump.ocl", "<description>", "<description>Not checked in. ");
        }
        ASSERT_FALSE(HasFailure());
    }
    static bool byColleague() { return std::string(GetParam().refuse).empty(); }

    void refuse() {
        if (byColleague()) {
            archive.lockAsBob("Pump.ocl");
            archive.lockAsBob("Control/PumpController.ocl");
        } else {
            inProject(GetParam().refuse);
        }
    }
    void accept() {
        if (byColleague()) {
            archive.unlockAsBob("Pump.ocl");
            archive.unlockAsBob("Control/PumpController.ocl");
        } else {
            inProject(GetParam().accept);
        }
    }
    /// Where a colleague has locked files, only commands that are one step of the tool and change no locked file.
    static std::vector<Command> commands() {
        std::vector<Command> all{
            {{"delete"}, {"Pump"}}, {{"move"}, {"Pump", "Control"}}, {{"move"}, {"Control", "Operator"}}};
        if (!byColleague()) {
            all.push_back({{"rename"}, {"Control", "Logic"}});
            all.push_back({{"rename"}, {"Pump", "Booster"}});
            all.push_back({{"delete", "--recursive"}, {"Control"}});
        }
        return all;
    }

    /// Model, files with bytes and permissions, and both workspace and archive as the tool shows them.
    std::map<std::string, std::string> everything() {
        std::map<std::string, std::string> state;
        for (const std::string &file : project.files()) {
            state[file] = (project.isWritable(file) ? "rw " : "ro ") + project.text(file);
        }
        state["model"] = project.run({"list", "--paths"}).out;
        const std::map<std::string, std::string> commands{
            {"RCS", "find station_ory | sort; find . -name '*,v' -exec md5sum '{}' + | sort"},
            {"CVS", "cd station_ory && cvs -f -Q -n update; find . -type d -not -name CVS | sort; "
                    "find \"$ARCHIVE\" -name '*,v' -exec md5sum '{}' + | sort"},
            {"Subversion", "cd station_ory && svn status; find . -name .svn -prune -o -print | sort; "
                           "svnlook youngest \"$ARCHIVE\""},
            {"Git", "git status --porcelain --untracked-files=all; git log --format=%H; find station_ory | sort; "
                    "git --git-dir=\"$ARCHIVE\" rev-parse HEAD"},
            {"Mercurial", "chg status; chg log --template '{node}\\n'; find station_ory | sort; "
                          "chg -R \"$ARCHIVE\" log --template '{node}\\n'"}};
        state["workspace"] = inProject(commands.at(GetParam().tool)).out;
        return state;
    }

    Ran good(const std::vector<std::string> &words, const std::vector<std::string> &items = {}) {
        Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 0) << words.front() << '\n' << ran.out << ran.err;
        return ran;
    }
    Ran inProject(const std::string &command) {
        return project.shell("cd " + quoted(project.units().parent_path().string()) + " && { " + command + "; }");
    }

    Project project;
    scenario::Adapter &archive = project.archive();
};

TEST_P(Refused, LeavesEverythingAsItWasAndWorksLater) {
    refuse();
    const auto before = everything();
    for (const auto &[words, items] : commands()) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, words.front() + " " + items.front());
        const Ran ran = project.run(words, items);
        EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
        const auto after = everything();
        for (const auto &[what, state] : after) {
            EXPECT_EQ(state, before.contains(what) ? before.at(what) : "(nothing)") << what << ran.out << ran.err;
        }
        EXPECT_EQ(after.size(), before.size());
        ASSERT_FALSE(HasFailure()) << ran.out << ran.err;
    }
    accept();
    good({"rename"}, {"Control", "Logic"});
    good({"move"}, {"Logic", "Operator"});
    good({"move"}, {"Pump", "Operator"});
    good({"delete"}, {"Pump"});
    EXPECT_EQ(archive.files(), project.files());
}

INSTANTIATE_TEST_SUITE_P(Tools, Refused, testing::ValuesIn(refusals),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
