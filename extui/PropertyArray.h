// The array of properties that the root object hands to its caller: task memory, one reference in each slot.
#pragma once

#include "public/Dot11ExtUI.h"

class CPropertyArray
{
public:
    // Empty (false) when there is no memory.
    explicit CPropertyArray(std::size_t nCapacity)
        : m_ppProperties(static_cast<IDot11ExtUIProperty**>(CoTaskMemAlloc(nCapacity * sizeof(IDot11ExtUIProperty*))))
    {
    }
    CPropertyArray(const CPropertyArray&) = delete;
    CPropertyArray& operator=(const CPropertyArray&) = delete;
    ~CPropertyArray()
    {
        for (ULONG i = 0; i < m_cProperties; ++i)
            m_ppProperties[i]->Release();
        CoTaskMemFree(m_ppProperties);
    }

    explicit operator bool() const
    {
        return m_ppProperties != nullptr;
    }

    // Takes over the caller's reference.
    void Add(IDot11ExtUIProperty* pProperty)
    {
        m_ppProperties[m_cProperties++] = pProperty;
    }

    void HandOver(ULONG* pcProperties, IDot11ExtUIProperty*** pppProperties)
    {
        *pcProperties = m_cProperties;
        *pppProperties = m_ppProperties;
        m_cProperties = 0;
        m_ppProperties = nullptr;
    }

private:
    IDot11ExtUIProperty** m_ppProperties;
    ULONG m_cProperties = 0;
};
