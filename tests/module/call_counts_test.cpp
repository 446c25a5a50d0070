// What an operation costs in calls of the platform that take their time, to the number: a round trip more would go unseen.
#include "tests/module/Operation.h"

#include <map>

namespace
{
using namespace tests::walk;

constexpr const char* countedFunctions[] = {
    "_putws",           "CreateDocument",
    "selectSingleNode", "RegOpenKeyExW",
    "WlanOpenHandle",   "WlanEnumInterfaces",
    "WlanGetProfile",   "WlanSetProfile",
    "WlanIhvControl",   "WlanGetInterfaceCapability",
};

// What those call too who stand by at a dialog, the service and the person; natively they are counted with the module.
constexpr const char* sharedFunctions[] = {"CreateDocument", "LockFileEx", "SetFilePointer", "WriteFile"};

// What a line of the log calls once each, beside its echo.
constexpr const char* lineFunctions[] = {
    "WaitForSingleObject", "LockFileEx", "GetFileSize", "SetFilePointer", "WriteFile", "UnlockFileEx", "ReleaseMutex",
};

// Of the operation as the first one that the module is asked for.
std::map<std::string, unsigned> CallsOf(const Operation& operation, CWorld& world)
{
    world.Unload();
    operation.Prepare(world);
    CCallCounter counter(tests::PlatformFunctions());
    world.pFault = &counter;
    operation.Outcome(world);
    world.pFault = nullptr;
    return counter.calls;
}

// Of a dialog, which asks for both adapters.
#define SERVICE(nProfilesRead, szStored)                                                                                         \
    "WlanOpenHandle 5 WlanEnumInterfaces 2 WlanGetProfile " #nProfilesRead " " szStored                                          \
    "WlanIhvControl 2 WlanGetInterfaceCapability 1"

TEST(CallCounts, AreExact)
{
    std::map<std::string, std::string> expected = {
        {"load", "RegOpenKeyExW 7"},
        {"load_without_log", "RegOpenKeyExW 7"},
        {"load_without_log_folder", "RegOpenKeyExW 7"},
        {"DllGetClassObject", "_putws 1"},
        {"DllGetClassObject_other_class", "_putws 2"},
        {"DllRegisterServer", "_putws 5 RegOpenKeyExW 1"},
        {"DllUnregisterServer", "_putws 5 RegOpenKeyExW 1"},
        {"CreateInstance_root", "_putws 2"},
        {"CreateInstance_connection", "_putws 2"},
        {"CreateInstance_security", "_putws 2"},
        {"CreateInstance_aggregated", "_putws 2"},
        {"Dot11ExtUIGetProperties_connection", "_putws 3"},
        {"Dot11ExtUIGetProperties_security", "_putws 3"},
        {"security_GetSelected", "_putws 4 CreateDocument 3 selectSingleNode 14"},
        {"security_SetSelected", "_putws 5 CreateDocument 4 selectSingleNode 12"},
        {"security_GetDisplayInfo", "_putws 7 CreateDocument 3 selectSingleNode 14"},
        {"security_SetDisplayInfo", "_putws 9 CreateDocument 2 selectSingleNode 7"},
        {"connection_SetSelected", "_putws 2 CreateDocument 2 selectSingleNode 14"},
        {"dialog_ok", "_putws 5 selectSingleNode 14 RegOpenKeyExW 1 " SERVICE(2, "WlanSetProfile 1 ")},
        {"dialog_cancel", "_putws 4 selectSingleNode 8 RegOpenKeyExW 1 " SERVICE(1, "")},
        {"dialog_invalid_profile", "_putws 6 selectSingleNode 15 RegOpenKeyExW 1 " SERVICE(2, "WlanSetProfile 1 ")},
        {"dialog_no_band", "_putws 4 selectSingleNode 8 RegOpenKeyExW 1 " SERVICE(1, "")},
        {"first_dialog", "_putws 5 selectSingleNode 14 RegOpenKeyExW 1 " SERVICE(2, "WlanSetProfile 1 ")},
    };
    CWorld world;
    for (const auto& operation : AllOperations())
    {
        SCOPED_TRACE(operation.szName);
        testing::internal::CaptureStdout();
        std::map<std::string, unsigned> calls = CallsOf(operation, world);
        testing::internal::GetCapturedStdout();
        for (const char* const szShared : sharedFunctions)
            if (IsDialog(operation))
                calls.erase(szShared);
        std::string counted;
        for (const char* const szFunction : countedFunctions)
            if (const unsigned uCalls = calls.contains(szFunction) ? calls[szFunction] : 0)
                counted += (counted.empty() ? "" : " ") + std::string(szFunction) + " " + std::to_string(uCalls);
        EXPECT_EQ(expected[operation.szName], counted);
        for (const char* const szFunction : lineFunctions)
            EXPECT_TRUE(!calls.contains(szFunction) || calls[szFunction] == calls["_putws"]) << szFunction;
    }
}
} // namespace
