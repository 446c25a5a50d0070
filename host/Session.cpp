#include "host/Session.h"

#include "host/HostError.h"
#include "host/ProfileFile.h"
#include "host/RegisteredModule.h"

namespace
{
const std::string& CheckedTrace(const std::string& strTrace, const std::vector<std::filesystem::path>& filesInUse)
{
    for (const std::filesystem::path& file : filesInUse)
        if (!strTrace.empty() && IsSameFile(PathOf(strTrace), file))
            throw CHostError(strTrace + ": the trace would overwrite a file in use");
    return strTrace;
}
} // namespace

CSession::CSession(const SessionOptions& options, const std::vector<std::filesystem::path>& filesInUse)
    : m_output(CheckedTrace(options.strTrace, filesInUse))
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
