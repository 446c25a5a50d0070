#include "tests/module/Operation.h"

#include "values/ResultNames.h"

namespace tests::walk
{
std::string Outputs::After(HRESULT hr) const
{
    const WCHAR* const szName = hr == S_OK ? OLESTR("S_OK") : hr == S_FALSE ? OLESTR("S_FALSE") : FindResultName(hr);
    std::string outcome = szName ? Narrow(szName) : "result " + std::to_string(hr);
    outcome += bFlag == nUntouched ? "" : " " + std::to_string(bFlag);
    if (bstrProfile != untouched.Get())
    {
        CBstr owner;
        *owner.Put() = bstrProfile;
        outcome += " " + ProfileTree(owner);
    }
    return outcome + others;
}

std::vector<Operation> AllOperations()
{
    std::vector<Operation> all;
    for (const auto operations : {ModuleOperations(), PropertyOperations(), DialogOperations()})
        all.insert(all.end(), operations.begin(), operations.end());
    return all;
}
} // namespace tests::walk
