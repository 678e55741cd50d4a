#include "CM/host/IPN.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

const std::vector<CString> &keys() {
    static const std::vector<CString> all{IPN::CMTool,
                                          IPN::CMAddMember,
                                          IPN::CMCheckIn,
                                          IPN::CMCheckOut,
                                          IPN::CMCheckOutFromArchive,
                                          IPN::CMConnectToCMRepository,
                                          IPN::CMFetch,
                                          IPN::CMFetchFromArchive,
                                          IPN::CMListArchive,
                                          IPN::CMLockItem,
                                          IPN::CMUnLockItem,
                                          IPN::Delete,
                                          IPN::CMArchive,
                                          IPN::CMArchiveSelection,
                                          IPN::CMChildThreadTimeOut,
                                          IPN::CMHeaderFile,
                                          IPN::CMHeaderItsLocker,
                                          IPN::CMHeaderItsVersion,
                                          IPN::CMListArchiveItsLocker,
                                          IPN::CMListArchiveItsMode,
                                          IPN::CMListArchiveItsVersion,
                                          IPN::CMListArchiveItsWorkingFile,
                                          IPN::CMMultiRecordDelimiter,
                                          IPN::CMReadOnly,
                                          IPN::CMReadWrite,
                                          IPN::CMSaveOnCheckOut};
    return all;
}

TEST(PropertyNames, SubjectAndMetaclassesAreThoseThatOthersRelyOn) {
    EXPECT_EQ(IPN::CM, "ConfigurationManagement");
    EXPECT_EQ(IPN::General, "General");
    EXPECT_NE(IPN::CMGeneral.CompareNoCase(IPN::General), 0);
}

TEST(PropertyNames, AreDistinctWithoutRegardToCase) {
    std::set<std::string> seen;
    for (CString key : keys()) {
        EXPECT_FALSE(key.IsEmpty());
        EXPECT_TRUE(seen.insert(key.MakeLower().str()).second) << key;
    }
}

TEST(PropertyNames, AreNamesThatATemplateCanSayAndNoArgumentHides) {
    const std::set<std::string> taken{"log",
                                      "label",
                                      "workspace",
                                      "unit",
                                      "unitdirectory",
                                      "unitpath",
                                      "unitdirpath",
                                      "unitarchivepath",
                                      "unitarchivedir",
                                      "archive",
                                      "archivedirectory",
                                      "mode",
                                      "targetdir",
                                      "shouldsuppresssccokmessage",
                                      "oqroot",
                                      "projectname",
                                      "currentdirectory",
                                      "orpdirectory",
                                      "projectunitdirname",
                                      "temp"};
    for (CString key : keys()) {
        EXPECT_EQ(taken.count(key.MakeLower().str()), 0U) << key;
        EXPECT_EQ(key.view().find_first_not_of("abcdefghijklmnopqrstuvwxyz"), std::string_view::npos) << key;
    }
}

TEST(PropertyNames, SavingOnCheckOutIsNotTheKeyOfTheProviderRoute) {
    EXPECT_NE(IPN::CMSaveOnCheckOut.CompareNoCase("SaveOnCheckOut"), 0);
}

} // namespace
