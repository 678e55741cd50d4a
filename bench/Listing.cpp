// Measures turning a listing into archive items, in the formats of two tools with the patterns of their installed
// sets. It measures the complete operation: a child prints the text (cat of a file), the shell collects it, the
// output window shows it, and the records become items. The tool's error and warning patterns are left out: they
// are not part of the listing, and the peers don't have them.
#include "bench/BareListing.h"
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Resident.h"
#include "bench/Works.h"

#include "CM/CMSupport/command/ListingParser.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <streambuf>

namespace fs = std::filesystem;

namespace bench {

namespace {

// --- The texts.

/// Returns the output of `svn info --recursive` for one file.
std::string subversionRecord(int number) {
    const std::string n = std::to_string(number);
    const std::string path = "sub" + std::to_string(number % 97) + "/Pump" + n + ".ocl";
    std::string text =
        "Path: " + path + "\nName: Pump" + n + ".ocl\nURL: file:///srv/svn/plant/trunk/" + path +
        "\nRelative URL: ^/trunk/" + path +
        "\nRepository Root: file:///srv/svn/plant\n"
        "Repository UUID: 13f79535-47bb-0310-9956-ffa450edef68\nRevision: 1234567\nNode Kind: file\n"
        "Last Changed Author: ann\nLast Changed Rev: " +
        n + "\nLast Changed Date: 2024-03-01 10:20:30 +0100 (Fri, 01 Mar 2024)\n";
    if (number % 10 == 0) {
        text += "Lock Token: opaquelocktoken:72ac3a9e-9a3f-4a18-a2dc-1d4a6cbb9a3d\nLock Owner: bob\n"
                "Lock Created: 2024-03-01 10:20:30 +0100 (Fri, 01 Mar 2024)\n";
    }
    return text + "\n";
}

/// Returns the output of `rlog -h` for one file.
std::string rcsRecord(int number) {
    return "\nRCS file: ./sub" + std::to_string(number % 97) + "/Pump" + std::to_string(number) +
           ".ocl,v\nWorking file: Pump" + std::to_string(number) + ".ocl\nhead: 1." +
           std::to_string(number % 50 + 1) + "\nbranch:\nlocks: strict\n" +
           (number % 10 == 0 ? "\tbob: 1.1\n" : "") +
           "access list:\nsymbolic names:\nkeyword substitution: kv\ntotal revisions: 4\n" + std::string(77, '=') +
           "\n";
}

struct Form {
    const char *tool;
    std::string (*record)(int number);
};
constexpr Form forms[] = {{"Subversion", subversionRecord}, {"RCS", rcsRecord}};

fs::path writeListing(const fs::path &file, const Form &form, int records) {
    std::ofstream out(file, std::ios::binary);
    for (int number = 1; number <= records; ++number) {
        out << form.record(number);
    }
    return file;
}

// --- Our side.

/// Provides an output window that discards all text.
class Window : public std::streambuf {
  public:
    Window() { getMainCMOutputer()() = &stream_; }
    ~Window() override { getMainCMOutputer()() = nullptr; }

  protected:
    std::streamsize xsputn(const char * /*text*/, std::streamsize count) override { return count; }
    int overflow(int character) override { return character == traits_type::eof() ? 0 : character; }

  private:
    std::ostream stream_{this};
};

class Items {
  public:
    Items() = default;
    ~Items() {
        for (CMArchiveItem *const item : list) {
            const std::unique_ptr<CMArchiveItem> owned(item);
        }
    }
    Items(const Items &) = delete;
    Items &operator=(const Items &) = delete;

    CMArchiveItemList list;
};

std::string catOf(const fs::path &file) { return "cat " + file.string(); }

/// Opens a project whose tool prints its listing with `cat`.
class Lister {
  public:
    Lister(const fs::path &projectFile, const char *tool) : open_(projectFile), tool_(tool) {
        open_.set(IPN::CMGeneral, IPN::CMTool, tool);
        open_.set(tool, "OperationErrorPattern", "");
        open_.set(tool, "OperationWarningPattern", "");
        open_.set(tool, IPN::CMChildThreadTimeOut, "0");
    }

    /// Returns the seconds that the listing took.
    double list(const fs::path &file, Items &items) {
        open_.set(tool_, IPN::CMListArchive, catOf(file));
        CMArgumentList arguments;
        CMDiagnosticList diagnostics;
        return secondsOf([&] { CMFacade::ListArchive(items.list, arguments, diagnostics); });
    }
    [[nodiscard]] IProject &project() const { return open_.project(); }

  private:
    Window window_;
    OpenProject open_;
    const char *tool_;
};

ListingPatterns patternsOf(const IProject &project) {
    const auto value = [](const CString &key) {
        CString text;
        if (CMProperty::getToolPropertyValue(key, text, false) == 0) {
            throw std::runtime_error("the installed set lacks " + key.str());
        }
        return text.str();
    };
    return {.delimiter = value(IPN::CMMultiRecordDelimiter),
            .fields = {value(IPN::CMListArchiveItsWorkingFile), value(IPN::CMListArchiveItsVersion),
                       value(IPN::CMListArchiveItsMode), value(IPN::CMListArchiveItsLocker)},
            .suffix = project.getFileExtension(),
            .projectFile = project.getFileName().str()};
}

void expectTheSame(const Items &ours, const fs::path &peers, int records) {
    if (ours.list.GetCount() != records) {
        throw std::runtime_error("the listing has " + std::to_string(ours.list.GetCount()) + " items");
    }
    std::ifstream in(peers);
    std::string line;
    for (const CMArchiveItem *const item : ours.list) {
        const std::string our = item->getFileNameWithPath().str() + "|" + item->getVersion().str() + "|" +
                                std::to_string(static_cast<int>(item->getMode())) + "|" + item->getLocker().str();
        if (!std::getline(in, line) || line != our) {
            throw std::runtime_error("the peer's item differs: '" + line + "' for '" + our + "'");
        }
    }
}

double numberIn(const fs::path &file) {
    double number = 0;
    std::ifstream(file) >> number;
    return number;
}

std::string perByte(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

bool listForm(const Setting &setting, const Form &form, const fs::path &projectFile) {
    const int many = setting.scaled(1'000'000);
    const int few = std::max(1, many / 10);
    const fs::path manyFile = writeListing(setting.scratch / "listing-many", form, many);
    const fs::path fewFile = writeListing(setting.scratch / "listing-few", form, few);
    const fs::path patternsFile = setting.scratch / "listing-patterns";
    const fs::path answer = setting.scratch / "listing-answer";
    const fs::path peersItems = setting.scratch / "listing-items";
    const std::string what = "list " + std::to_string(many) + " records, " + form.tool + " (" +
                             std::to_string(fs::file_size(manyFile) >> 20) + " MiB)";
    bool ok = true;
    const auto show = [&ok](const Row &row) {
        print(row);
        ok = row.ok() && ok;
    };

    Lister lister(projectFile, form.tool);
    const ListingPatterns patterns = patternsOf(lister.project());
    writePatterns(patterns, patternsFile);
    const auto listed = [&](const fs::path &file, int records) {
        Items items;
        const double took = lister.list(file, items);
        if (items.list.GetCount() != records) {
            throw std::runtime_error("the listing has " + std::to_string(items.list.GetCount()) + " items");
        }
        return took;
    };
    const auto ours = [&] { return listed(manyFile, many); };
    const auto peer = [&](const fs::path &out) {
        runPeer({"perl", (setting.sources / "listing.pl").string(), patternsFile.string(), catOf(manyFile),
                 out.string()},
                {.input = {}, .output = answer.string()});
        return numberIn(answer);
    };
    {
        Items items;
        lister.list(manyFile, items);
        peer(peersItems);
        expectTheSame(items, peersItems, many);
    }
    show(timedRow(what + " / Perl", measurePaired(setting.runs, ours, [&] { return peer({}); }), 0.25));

    const BareListing bare(patterns, manyFile);
    const CString text(bare.text());
    const auto parsed = [&] {
        Items items;
        return secondsOf([&] {
            command::parseListing(text, {.projectFile = patterns.projectFile, .projectSuffix = patterns.suffix},
                                  items.list);
        });
    };
    show(timedRow(what + ", text to items / bare PCRE2 matches",
                  measurePaired(setting.runs, parsed, [&] { return bare.match(); }), 1.6));
    show(timedRow(what + " / " + std::to_string(few),
                  measurePaired(setting.runs, ours, [&] { return listed(fewFile, few); }), 11));

    runPeer({setting.self.string(), "--list-once", projectFile.string(), form.tool, manyFile.string()},
            {.input = {}, .output = answer.string()});
    const double taken = numberIn(answer) / static_cast<double>(fs::file_size(manyFile));
    show({what + ": peak memory / the text", perByte(taken), "1.00", taken, 5});
    return ok;
}

} // namespace

int listOnce(const std::vector<std::string> &arguments) {
    Lister lister(arguments.at(0), arguments.at(1).c_str());
    const double before = largestResidentBytes();
    Items items;
    lister.list(arguments.at(2), items);
    std::cout << largestResidentBytes() - before << '\n';
    std::cout.flush();
    std::_Exit(items.list.IsEmpty() ? 1 : 0);
}

bool listArchive(const Setting &setting) {
    const fs::path projectFile = makeProject(setting.scratch / "listing", 10, {});
    bool ok = true;
    for (const Form &form : forms) {
        ok = listForm(setting, form, projectFile) && ok;
    }
    return ok;
}

} // namespace bench
