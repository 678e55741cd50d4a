#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/FileNameList.h"
#include "CM/CMSupport/provider/pvContextStruct.h"

#include <gmock/gmock.h>
#include <memory>

namespace {

// The state is the process's, so each test puts back what it changes; capabilities stay, and are set to another
// value each time.

TEST(ProviderState, IsStoredAsItIsSet) {
    using Getter = int (*)();
    using Setter = int (*)(int);
    const std::pair<Getter, Setter> all[] = {
        {CMProperty::getIsLoaded, CMProperty::setIsLoaded},
        {CMProperty::getIsInitialized, CMProperty::setIsInitialized},
        {CMProperty::getIsSetProjectPath, CMProperty::setIsSetProjectPath},
        {CMProperty::getIsConnected, CMProperty::setIsConnected},
    };
    for (const auto &[get, set] : all) {
        EXPECT_EQ(get(), 0);
        EXPECT_EQ(set(3), 1);
        EXPECT_EQ(get(), 3);
        EXPECT_EQ(set(0), 1) << "a setter says 1 for any value";
    }
}

TEST(ProviderState, KeepsTheProjectNameThatItIsGiven) {
    char name[] = "Plant";
    EXPECT_EQ(CMProperty::getCurrentProjectName(), nullptr);
    EXPECT_EQ(CMProperty::setCurrentProjectName(name), 1);
    EXPECT_EQ(CMProperty::getCurrentProjectName(), name);
    EXPECT_EQ(CMProperty::setCurrentProjectName(nullptr), 1);
}

TEST(ProviderState, GivesTheAddressOfTheContext) {
    int context = 0;
    EXPECT_EQ(CMProperty::getPvContext(), nullptr);
    EXPECT_EQ(CMProperty::setPvContext(&context), 1);
    EXPECT_EQ(CMProperty::getPvContext(), &context);
    *CMProperty::getPvContextPtr() = nullptr;
    EXPECT_EQ(CMProperty::getPvContext(), nullptr);
}

TEST(ProviderState, ZeroesTheOptions) {
    int options = 0;
    *CMProperty::getPvOptionsPtr() = &options;
    EXPECT_EQ(CMProperty::getPvOptions(), &options);
    EXPECT_EQ(CMProperty::setVoidPvOptions(), 1);
    EXPECT_EQ(CMProperty::getPvOptions(), nullptr);
}

TEST(ProviderState, KeepsACapabilityOnceItIsSet) {
    static const int reentrantAtStart = CMProperty::isSetSCC_CAP_REENTRANT(0);
    static const int commentAtStart = CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0);
    EXPECT_EQ(reentrantAtStart, 0);
    EXPECT_EQ(commentAtStart, 0);

    const int reentrant = CMProperty::isSetSCC_CAP_REENTRANT(0) + 8;
    const int comment = CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(reentrant), reentrant);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), reentrant);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), comment) << "the two are apart";
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(comment + 5), comment + 5);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), comment + 5);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), reentrant);
}

TEST(ProviderState, ListsEachFileNameOnce) {
    FileNameList &names = CMProperty::getFileNamesList();
    for (const char *const name : {"b.ocl", "a.ocl", "b.ocl", "B.ocl"}) {
        names.AddTail(name);
    }
    EXPECT_THAT(names.names(), testing::ElementsAre("b.ocl", "a.ocl", "B.ocl")) << "each once, in their order";
    EXPECT_TRUE(names.contains("a.ocl"));
    names.RemoveAll();
    EXPECT_TRUE(names.IsEmpty());
    EXPECT_FALSE(names.contains("a.ocl"));
    names.AddTail("a.ocl");
    EXPECT_EQ(names.GetCount(), 1);
    names.RemoveAll();
}

TEST(ProviderContexts, AreFoundAndRemovedByNameInAnyCase) {
    pvContextStruct *first = CMProperty::addPvStruct();
    pvContextStruct *second = CMProperty::addPvStruct();
    pvContextStruct *third = CMProperty::addPvStruct();
    EXPECT_EQ(CMProperty::getPvContextStructList().GetTail(), third);
    EXPECT_EQ(first->getpvContextPtr(), nullptr);
    second->setpvContextName("Plant");
    third->setpvContextName("plant");
    EXPECT_EQ(CMProperty::findPvStructByContextName("PLANT"), second);
    EXPECT_EQ(CMProperty::findPvStructByContextName("Mill"), nullptr);
    EXPECT_EQ(CMProperty::removePvStructByContextName("Mill"), 0);

    EXPECT_EQ(CMProperty::removePvStructByContextName("plANT"), 1);
    EXPECT_EQ(second->getpvContextName(), "Plant") << "taken off, and not deleted";
    EXPECT_EQ(CMProperty::findPvStructByContextName("Plant"), third);
    EXPECT_EQ(CMProperty::getPvContextStructList().GetCount(), 2);
    for (pvContextStruct *context : {first, third}) {
        const std::unique_ptr<pvContextStruct> owned(context);
    }
    CMProperty::getPvContextStructList().RemoveAll();
}

TEST(ProviderContexts, AreNotFoundByTheEmptyName) {
    const std::unique_ptr<pvContextStruct> unnamed(CMProperty::addPvStruct());
    EXPECT_EQ(CMProperty::findPvStructByContextName(""), nullptr);
    EXPECT_EQ(CMProperty::removePvStructByContextName(""), 0);
    EXPECT_EQ(CMProperty::getPvContextStructList().GetCount(), 1);
    CMProperty::getPvContextStructList().RemoveAll();
}

TEST(ProviderContexts, AreFoundBehindAnEmptyPlace) {
    CMProperty::getPvContextStructList().AddTail(nullptr);
    const std::unique_ptr<pvContextStruct> context(CMProperty::addPvStruct());
    context->setpvContextName("Plant");
    EXPECT_EQ(CMProperty::findPvStructByContextName("plant"), context.get());
    CMProperty::getPvContextStructList().RemoveAll();
}

TEST(ProviderContexts, TakeTheirContextFromTheProvider) {
    pvContextStruct context;
    int opened = 0;
    *context.getpvContextPtrPtr() = &opened;
    EXPECT_EQ(context.getpvContextPtr(), &opened);
    EXPECT_EQ(context.getpvContextName(), "");
}

} // namespace
