#include "tqplatform/framework/ModuleState.h"

#include <gtest/gtest.h>

#include "tqlib/foundation/TQString.h"

namespace {

using tqplatform::Module;
using tqplatform::Resource;
using tqplatform::ResourceKind;

constexpr Resource hostResources[] = {
    {ResourceKind::string, 2001, "Messwert", 8},
    {ResourceKind::string, 960, "Yes", 3},
    {ResourceKind::bitmap, 2001, "bits", 4},
};
constexpr Module hostModule{"host", hostResources};

TEST(ModuleState, AHostsResourcesJoinTheChainWithoutHidingOthers) {
    AFX_EXTENSION_MODULE record{};
    TQString text(2001u);
    EXPECT_EQ(text, "");
    ASSERT_EQ(AfxInitExtensionModule(record, &hostModule), 1);
    new CDynLinkLibrary(record);
    EXPECT_EQ(TQString(2001u), "Messwert");
    EXPECT_EQ(TQString(960u), "Ja");
    auto const *bitmap = AfxGetModuleState()->findResource(ResourceKind::bitmap, 2001);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->size, 4u);
    AfxTermExtensionModule(record);
    EXPECT_EQ(TQString(2001u), "");
    EXPECT_EQ(record.bInitialized, 0);
}

TEST(ModuleState, RefusesANullModule) {
    AFX_EXTENSION_MODULE record{};
    EXPECT_EQ(AfxInitExtensionModule(record, nullptr), 0);
    EXPECT_EQ(record.bInitialized, 0);
    AfxTermExtensionModule(record);
}

TEST(ModuleState, RegistersAClassOnce) {
    static CRuntimeClass record{"ModuleStateTest", 8, 0, nullptr, nullptr};
    EXPECT_EQ(AfxGetModuleState()->findClass("ModuleStateTest"), nullptr);
    AfxClassInit(&record);
    AfxClassInit(&record);
    EXPECT_EQ(AfxGetModuleState()->findClass("ModuleStateTest"), &record);
}

}  // namespace
