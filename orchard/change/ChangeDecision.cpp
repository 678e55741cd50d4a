#include "orchard/change/ChangeDecision.h"

#include <algorithm>

namespace orchard {

namespace {

bool any(const Findings &findings, std::initializer_list<Found> which) {
    return std::ranges::any_of(findings.files, [&](const Findings::File &file) {
        return std::ranges::find(which, file.found) != which.end();
    });
}

Decision decideMove(const Findings &findings) {
    const bool copied = findings.byTool && any(findings, {Found::both});
    const bool begun = copied || any(findings, {Found::newPlace, Found::carried});
    const bool barred = any(findings, {Found::both, Found::blocked});
    const bool canBegin = findings.goesOn && !barred && any(findings, {Found::oldPlace, Found::renamed});
    return {begun || canBegin || findings.files.empty(), begun, {true}};
}

Decision decideRemoval(const Findings &findings) {
    const bool begun = any(findings, {Found::nowhere});
    const bool finish = begun || findings.goesOn || findings.textWritten || findings.files.empty();
    Decision decision{finish, begun, std::vector<bool>(findings.parts, true)};
    if (!findings.byTool || !decision.finish) {
        return decision;
    }
    // What the tool has not touched stays; a part without files has nothing that could show it.
    std::vector<bool> hasFile(findings.parts, false);
    std::vector<bool> touched(findings.parts, false);
    for (const Findings::File &file : findings.files) {
        hasFile[file.part] = true;
        touched[file.part] = touched[file.part] || file.found == Found::nowhere;
    }
    for (std::size_t part = 0; part < findings.parts; ++part) {
        decision.parts[part] = touched[part] || !hasFile[part];
    }
    decision.finish = std::ranges::find(decision.parts, true) != decision.parts.end();
    return decision;
}

} // namespace

Decision decide(const Findings &findings) {
    return findings.removes ? decideRemoval(findings) : decideMove(findings);
}

} // namespace orchard
