#include "tests/orchard/storage/Workbench.h"

#include "CM/host/Reload.h"

#include <sys/stat.h>

namespace {

class FileCompare : public Workbench {
  protected:
    void SetUp() override { openSample(); }
};

TEST_F(FileCompare, IsEqualWhenOnlyTheHeaderOrTheLineEndsChanged) {
    CCMFileCompare compare(unitFile("Valve.ocl"));
    compare.LoadFile1();
    edit(unitFile("Valve.ocl"), "<class ", "<!--\r\n$Id: 1.2 $\r\n-->\r\n<class ");
    edit(unitFile("Valve.ocl"), "</name>\n", "</name>\r\n");
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    compare.LoadFile2();
    EXPECT_NE(compare.Compare(), 0);
    compare.atm(unit("Valve"));
    EXPECT_EQ(unit("Valve")->getCMHeader(), "$Id: 1.2 $");
    EXPECT_TRUE(unit("Valve")->isReadOnly());
}

TEST_F(FileCompare, DiffersWhenTheContentChanged) {
    CCMFileCompare compare(unitFile("Valve.ocl"));
    compare.LoadFile1();
    edit(unitFile("Valve.ocl"), "A motor", "Any");
    compare.LoadFile2();
    EXPECT_EQ(compare.Compare(), 0);
}

TEST_F(FileCompare, DiffersWhenTheFileWasNewsToTheModelAlready) {
    edit(unitFile("Valve.ocl"), "A motor", "Any");
    CCMFileCompare compare(unitFile("Valve.ocl"));
    compare.LoadFile1();
    compare.LoadFile2();
    EXPECT_EQ(compare.Compare(), 0);
}

TEST_F(FileCompare, DiffersWithoutBothPictures) {
    CCMFileCompare compare(unitFile("Valve.ocl"));
    EXPECT_EQ(compare.Compare(), 0);
    compare.LoadFile2();
    EXPECT_EQ(compare.Compare(), 0) << "no picture from before";
    std::filesystem::remove(unitFile("Valve.ocl"));
    compare.LoadFile1();
    compare.LoadFile2();
    EXPECT_EQ(compare.Compare(), 0) << "a file that is gone equals nothing";
}

} // namespace
