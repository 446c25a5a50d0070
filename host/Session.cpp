#include "host/Session.h"

#include "host/HostError.h"
#include "host/RegisteredModule.h"
#include "host/Shown.h"

CSession::CSession(const SessionOptions& options) : m_output(options.strTrace)
{
    if (options.bRegistered)
    {
        // Held for the end, when the module is asked whether it can go.
        m_root = ActivateExtension();
        m_module.emplace(RegisteredModuleFile());
        return;
    }
    m_module.emplace(options.strModule);
    m_registration.emplace(*m_module);
    m_root = ActivateExtension();
}

void CSession::PrintProfile(const CProfile& profile)
{
    const auto isShown = [](CWideView text)
    {
        std::string strText = Utf8Of(text);
        std::erase(strText, '\r');
        return strText == EscapedLines(Utf8Of(WithoutKeys(WideOf(strText))));
    };
    if (m_output.IsSeen() && !isShown(profile.Text()))
        throw CHostError(profile.Title() + ": standard output is a terminal, and the profile holds keys or control characters");
    m_output.WriteBytes(profile.Bytes());
}

void CSession::Close()
{
    m_root = {};
    m_registration.reset();
    if (!m_module->CanUnloadNow())
        throw CHostError(m_module->Name() + ": the module still holds objects");
}
