// The entries of a security property, as the host is shown them.
#pragma once

#include "extui/SecurityPropertyInfo.h"
#include "public/Dot11ExtUI.h"

#include <memory>
#include <new>

class CPropertyEntries
{
public:
    // Null when there is no memory for the array; an entry without memory for its text has none.
    static std::unique_ptr<CPropertyEntries> Make(CCXSecurityPropertyInfo& info)
    {
        std::unique_ptr<CPropertyEntries> made(new (std::nothrow) CPropertyEntries);
        if (!made)
            return nullptr;
        const bool bQualified = HasQualifiedNames(info);
        for (const DWORD cipher : CiphersOf(info))
            made->m_entries[made->m_cEntries++] = {cipher, 0, SysAllocString(CipherName(cipher, bQualified))};
        return made;
    }
    ~CPropertyEntries()
    {
        for (ULONG i = 0; i < m_cEntries; ++i)
            SysFreeString(m_entries[i].bstrDisplayText);
        // One after the other, however many there are: not each in the destructor of the next.
        while (m_earlier)
            m_earlier = std::move(m_earlier->m_earlier);
    }
    CPropertyEntries(const CPropertyEntries&) = delete;
    CPropertyEntries& operator=(const CPropertyEntries&) = delete;

    Dot11ExtUIPropertyEntry* First()
    {
        return m_entries;
    }
    ULONG Count() const
    {
        return m_cEntries;
    }
    // A host may still hold the entries of an earlier binding: they live as long as those that came after them.
    void Keep(std::unique_ptr<CPropertyEntries> earlier)
    {
        m_earlier = std::move(earlier);
    }

private:
    CPropertyEntries() = default;

    Dot11ExtUIPropertyEntry m_entries[maxCiphers] = {};
    ULONG m_cEntries = 0;
    std::unique_ptr<CPropertyEntries> m_earlier;
};
