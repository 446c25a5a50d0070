// The WLAN service as the host itself asks it, which is the one that the module meets.
#pragma once

#include "host/Library.h"

#include <wlanapi.h>

#include <memory>
#include <string>
#include <vector>

// What the commands that use the service have in common; all UTF-8.
struct ServiceOptions
{
    std::string strFolder;  // of a simulated service; empty for the machine's own
    std::string strLog;     // the simulated service's call log, or empty
    std::string strAdapter; // a GUID, or empty
};

struct WlanAdapter
{
    GUID guid;
    std::string strDescription;
};

struct StoredText
{
    CWideString strText;
    DWORD dwFlags;
};

class CWlanService
{
public:
    // Must be made before the module is loaded and outlive it: a wlanapi.dll that the process has already is the one that
    // the module's import gets. Throws CHostError when there is no service.
    explicit CWlanService(const ServiceOptions& options);
    // As the constructor; without a service that is not needed the result is null.
    static std::unique_ptr<CWlanService> Open(const ServiceOptions& options, bool bNeeded);
    ~CWlanService();
    CWlanService(const CWlanService&) = delete;
    CWlanService& operator=(const CWlanService&) = delete;

    std::vector<WlanAdapter> Adapters() const;
    // Throws CHostError, with the list of those that there are, for an adapter that is not one of them.
    WlanAdapter Adapter(const GUID& guid) const;

    // Of the adapter's profiles.
    std::vector<CWideString> ProfileNames(const GUID& adapter) const;
    // Nothing when the adapter has no profile of the name. Names are at most 255 code units.
    std::optional<StoredText> Profile(const GUID& adapter, const CWideString& strName) const;
    // Stores over the profile that has the text's name. Throws CHostError with the service's reason.
    void Store(const GUID& adapter, const StoredText& profile) const;

    // The PHY types that the adapter lists.
    std::vector<unsigned> PhyTypes(const GUID& adapter) const;
    // What the adapter's driver answers to a query: at most cbMost bytes, empty for no answer.
    std::string AskDriver(const GUID& adapter, DWORD dwObjectIdentifier, DWORD cbPayload, std::size_t cbMost) const;

private:
    // Calls the library's function of this type and name.
    template <class Function, class... Arguments>
    DWORD Call(const char* szName, Arguments... arguments) const
    {
        return Export<Function*>(m_library.Get(), szName)(arguments...);
    }
    template <class Record>
    auto Own(Record* pRecord) const
    {
        return std::unique_ptr<Record, decltype(&WlanFreeMemory)>(pRecord, m_pFreeMemory);
    }

    CUniqueLibrary m_library;
    decltype(&WlanFreeMemory) m_pFreeMemory;
    HANDLE m_hClient = nullptr;
};

// With or without braces. Nothing when the text is no GUID.
std::optional<GUID> GuidOf(const std::string& strText);
// 36 characters, lower case.
std::string TextOf(const GUID& guid);
