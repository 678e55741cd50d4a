#include "apps/orchard-cm/operation/ArchiveNames.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/storage/NewProject.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace orchard_cm;
using testing::ElementsAre;

TEST(ArchiveNames, TakeEitherSeparator) {
    const support::TemporaryDirectory directory;
    GlobalOptions options;
    options.project = orchard::createSampleProject(directory / "Plant", "None").projectFile;
    std::ostringstream out;
    std::ostringstream err;
    Output output{Output::Form::text, out, err, false};
    Session session{options, output};
    const IProject &project = session.project();
    const std::string file = CMProperty::getWorkingDir().str() + "/Control/Pump.ocl";
    std::string absolute = file;
    std::ranges::replace(absolute, '/', '\\');
    EXPECT_THAT(archiveNames(project, {absolute}, false), ElementsAre(file));
    EXPECT_THAT(archiveNames(project, {"Control\\.\\Pump.ocl"}, false), ElementsAre(file));
    EXPECT_THAT(archiveNames(project, {file, absolute, "Control/Pump.ocl"}, false), ElementsAre(file));
}
