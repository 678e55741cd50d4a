// Tests the binding of the entries.
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/CMSupport/provider/CMProviderFault.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"

#include <stdexcept>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Binding : public ProviderFixture {
  protected:
    void load(const char *library = DOUBLE_PROVIDER) { dll.LoadDll(library); }

    SCCdll dll;
    int place = 0;
    char file[3] = "/a";
    char other[3] = "/b";
    char comment[64] = "text";
    char *files[2] = {file, other};
};

TEST_F(Binding, WithoutALibraryEveryCallIsASuccess) {
    long status = 7;
    EXPECT_EQ(dll.SccCloseProject(&place), 0);
    EXPECT_EQ(dll.SccQueryInfo(&place, 1, files, &status), 0);
    EXPECT_EQ(status, 7);
    EXPECT_FALSE(dll.SccCloseProject.isExported());
}

TEST_F(Binding, CallsTheEntryAndReturnsItsResult) {
    load();
    provider->answer("SccCloseProject", SCC_E_PROJNOTOPEN);
    EXPECT_EQ(dll.SccCloseProject(&place), SCC_E_PROJNOTOPEN);
    EXPECT_THAT(provider->calls, ElementsAre("SccCloseProject context=0"));
}

TEST_F(Binding, PassesTheArgumentsOfEachEntryOn) {
    load();
    void *context = nullptr;
    char text[4096] = "";
    long capabilities = 0;
    unsigned long length = 0;
    int isNew = 1;
    long flags[] = {SCC_FILETYPE_TEXT, SCC_FILETYPE_BINARY};
    long status[2] = {};
    void *options = &place;
    const POPLISTFUNC ignore = [](void *, int, long, char const *) { return 1; };
    dll.SccInitialize(&context, &place, comment, text, &capabilities, text, &length, &length);
    dll.SccGetProjPath(context, &place, file, text, other, comment, 1, &isNew);
    dll.SccOpenProject(context, &place, file, text, other, comment, comment, nullptr, 3);
    dll.SccCheckout(context, &place, 2, files, comment, 4, options);
    dll.SccCheckin(context, &place, 2, files, comment, 5, nullptr);
    dll.SccAdd(context, &place, 2, files, comment, flags, options);
    dll.SccPopulateList(context, SCC_COMMAND_ADD, 2, files, ignore, &place, status, SCC_PL_DIR);
    dll.SccGetCommandOptions(context, &place, SCC_COMMAND_HISTORY, nullptr);
    dll.SccGet(context, &place, 2, files, 6, options);
    dll.SccHistory(context, &place, 1, files, 7, options);
    dll.SccProperties(context, &place, file);
    dll.SccQueryInfo(context, 2, files, status);
    dll.SccUncheckout(context, &place, 2, files, 8, options);
    dll.SccRename(context, &place, file, other);
    dll.SccRemove(context, &place, 2, files, comment, 9, options);
    dll.SccSetOption(context, SCC_OPT_HASCANCELMODE, 1);
    dll.SccCloseProject(context);
    dll.SccUninitialize(context);
    dll.SccCheckinTask(context, comment);
    dll.SccSetTask(context, file);
    dll.SccGetDefaultTask(context, file);
    dll.SccCreateTask(context, nullptr);
    dll.SccShowTask(context, file);
    dll.SccListTasks(context, file);
    EXPECT_THAT(
        provider->calls,
        ElementsAre(
            "SccInitialize context=null window=given caller=text name= label= capabilities=0 lengths=0",
            "SccGetProjPath context=1 window=given user=/a project=Double local=/b aux=text change=1 new=1",
            "SccOpenProject context=1 window=given user=/a project=Chosen local=/b aux=chosen/aux "
            "comment=chosen/aux textOutput=null flags=3",
            "SccCheckout context=1 window=given files=/a,/b comment=chosen/aux flags=4 options=given",
            "SccCheckin context=1 window=given files=/a,/b comment=chosen/aux flags=5 options=null",
            "SccAdd context=1 window=given files=/a,/b comment=chosen/aux flags=1,2 options=given",
            "SccPopulateList context=1 command=4 files=/a,/b data=given flags=1",
            "SccGetCommandOptions context=1 window=given command=7 options=null",
            "SccGet context=1 window=given files=/a,/b flags=6 options=given",
            "SccHistory context=1 window=given files=/a flags=7 options=given",
            "SccProperties context=1 window=given file=/a", "SccQueryInfo context=1 files=/a,/b",
            "SccUncheckout context=1 window=given files=/a,/b flags=8 options=given",
            "SccRename context=1 window=given from=/a to=/b",
            "SccRemove context=1 window=given files=/a,/b comment=chosen/aux flags=9 options=given",
            "SccSetOption context=1 option=3 value=1", "SccCloseProject context=1", "SccUninitialize context=1",
            "SccCheckinTask context=1 comment=chosen/aux", "SccSetTask context=1 task=/a",
            "SccGetDefaultTask context=1 task=/a", "SccCreateTask context=1 reserved=null",
            "SccShowTask context=1 task=/a", "SccListTasks context=1 file=/a"));
}

TEST_F(Binding, AnEntryThatTheProviderLacksIsASuccess) {
    load(DOUBLE_PROVIDER_WITHOUT_CHOICE);
    char text[] = "text";
    int isNew = 1;
    EXPECT_EQ(dll.SccGetProjPath(&place, nullptr, text, text, text, text, 0, &isNew), 0);
    EXPECT_STREQ(text, "text");
    EXPECT_FALSE(dll.SccGetProjPath.isExported());
    EXPECT_TRUE(dll.SccOpenProject.isExported());
}

TEST_F(Binding, TheFirstLookUpCountsForGood) {
    EXPECT_FALSE(dll.SccCloseProject.isExported()) << "without a library nothing is looked up";
    load(DOUBLE_PROVIDER_WITHOUT_CHOICE);
    EXPECT_FALSE(dll.SccGetProjPath.isExported());
    EXPECT_TRUE(dll.SccCloseProject.isExported());
    dll.Initialize(0);
    dll.Uninitialize(); // unloads, so that another library can be named
    EXPECT_EQ(dll.SccCloseProject(&place), 0) << "no library is held";
    load();
    EXPECT_FALSE(dll.SccGetProjPath.isExported()) << "a failed look-up isn't tried again";
    EXPECT_TRUE(dll.SccSetOption.isExported());
}

TEST_F(Binding, KnowsItsEntriesInTheOrderOfTheirDeclaration) {
    std::vector<std::string> names;
    std::vector<std::string> required;
    for (const SccEntryBase *const entry : dll.entries()) {
        names.emplace_back(entry->name());
        if (entry->need() == SccEntryBase::Need::required) {
            required.emplace_back(entry->name());
        }
    }
    EXPECT_THAT(names,
                ElementsAre("SccInitialize", "SccGetProjPath", "SccOpenProject", "SccUninitialize", "SccCheckout",
                            "SccCheckin", "SccAdd", "SccPopulateList", "SccGetCommandOptions", "SccCloseProject",
                            "SccGet", "SccHistory", "SccProperties", "SccQueryInfo", "SccUncheckout", "SccRename",
                            "SccRemove", "SccSetOption", "SccCheckinTask", "SccSetTask", "SccGetDefaultTask",
                            "SccCreateTask", "SccShowTask", "SccListTasks"));
    EXPECT_THAT(required, ElementsAre("SccInitialize", "SccOpenProject", "SccUninitialize", "SccCheckout",
                                      "SccCheckin", "SccAdd", "SccCloseProject", "SccGet", "SccUncheckout"));
}

TEST_F(Binding, ACrashOfTheProviderIsAnExceptionThatNamesTheEntry) {
    load();
    provider->answers["SccCloseProject"] = crash;
    try {
        dll.SccCloseProject(&place);
        FAIL() << "nothing was thrown";
    } catch (const CMProviderFault &fault) {
        EXPECT_THAT(fault.what(), HasSubstr("SccCloseProject"));
    }
    provider->answers.clear();
    EXPECT_EQ(dll.SccCloseProject(&place), 0) << "the next call is made again";
}

TEST_F(Binding, AnExceptionOfTheProviderPassesThrough) {
    load();
    provider->answers["SccCloseProject"] = []() -> SCCRTN { throw std::out_of_range("thrown"); };
    EXPECT_THROW(dll.SccCloseProject(&place), std::out_of_range);
}

TEST_F(Binding, TheProcessHasOneForAllProjects) {
    SCCdll &one = CMProperty::getSCCdll();
    host.model.activeProject = nullptr;
    EXPECT_EQ(&CMProperty::getSCCdll(), &one);
}

} // namespace
