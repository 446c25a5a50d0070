#include "tests/module/Operation.h"

#include <cstdio>

namespace tests::walk
{
std::string ResultText(HRESULT hr)
{
    static constexpr std::pair<HRESULT, const char*> names[] = {
        {S_OK, "S_OK"},
        {S_FALSE, "S_FALSE"},
        {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
        {E_NOTIMPL, "E_NOTIMPL"},
        {E_FAIL, "E_FAIL"},
        {E_NOINTERFACE, "E_NOINTERFACE"},
        {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE"},
        {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION"},
    };
    for (const auto& [code, szName] : names)
    {
        if (code == hr)
            return szName;
    }
    char szCode[16];
    std::snprintf(szCode, sizeof(szCode), "%08X", static_cast<unsigned>(hr));
    return szCode;
}

std::string CProfileOutputs::Describe(HRESULT hr)
{
    std::string text = "kept";
    if (m_bstrModified != m_kept.Get())
    {
        CBstr modified;
        *modified.Put() = m_bstrModified;
        text = ProfileTree(modified);
    }
    return ResultText(hr) + " " + std::to_string(m_bModified) + " " + text;
}
} // namespace tests::walk
