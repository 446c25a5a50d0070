// What the cases of the security property start from: the module with its log, and the property as the root object gives it.
#pragma once

#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "tests/support/XmlVerbs.h"

namespace tests::security
{
using xml::CaseName;
using Lines = std::vector<std::string>;

inline constexpr BOOL untouchedBool = 77;
inline constexpr ULONG untouchedNumber = 78;

inline std::string NetworkTree(const std::string& token, const std::string& cipher)
{
    const std::string encryption = cipher.empty() ? "<encryption/>" : "<encryption>" + cipher + "</encryption>";
    return "<CCX><authenticatingNetwork><" + token + ">" + encryption + "</" + token + "></authenticatingNetwork></CCX>";
}

#define NETWORK(token, cipher)                                                                                                   \
    OLESTR("<CCX><Rapido>true</Rapido><authenticatingNetwork><" token "><encryption>" cipher "</encryption></" token ">"         \
           "</authenticatingNetwork></CCX>")

class SecurityProperty : public testing::Test
{
protected:
    CComRef<ICCXExtUIKey> Unbound() const
    {
        return m_module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    }
    Lines TakeLines()
    {
        return m_log.Take();
    }
    IDot11ExtUIProperty& Bound() const
    {
        return *m_property.Get();
    }
    const CModuleUnderTest& Module() const
    {
        return m_module;
    }

private:
    CTraceLog m_log;
    CModuleUnderTest m_module;
    CComRef<IDot11ExtUIProperty> m_property = m_module.Property(propertyKindSecurity);
};

template <class Case>
class SecurityPropertyCase : public SecurityProperty, public testing::WithParamInterface<Case>
{
};
} // namespace tests::security
