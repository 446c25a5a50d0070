#include "host/Session.h"

#include "host/HostError.h"
#include "host/RegisteredModule.h"

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

void CSession::Close()
{
    m_root = {};
    m_registration.reset();
    if (!m_module->CanUnloadNow())
        throw CHostError(m_module->Name() + ": the module still holds objects");
}
