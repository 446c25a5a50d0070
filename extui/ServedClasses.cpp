#include "extui/ServedClasses.h"

#include "extui/ExtUI.h"
#include "extui/ExtUICon.h"
#include "extui/ExtUIKey.h"
#include "trace/IhvuiTrace.h"

namespace
{
constexpr ServedClass servedClasses[] = {
    {IID_IDot11ExtUI, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_IDot11ExtUI\n")); }, CreateComObject<CExtUI>},
    {IID_ICCXExtUICon, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_ICCXExtUICon\n")); }, CreateComObject<CExtUICon>},
    {IID_ICCXExtUIKey, [] { IhvuiTrace(traceLevelInfo, OLESTR("-- IID_ICCXExtUIKey\n")); }, CreateComObject<CExtUIKey>},
};
} // namespace

std::span<const ServedClass> ServedClasses()
{
    return servedClasses;
}
