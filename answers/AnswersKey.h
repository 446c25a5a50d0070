// A key of the registry for questions, and the parts of what is asked about the registry.
#pragma once

#include "answers/Record.h"
#include "values/Unique.h"

namespace answers
{
// RegCreateKeyExW and RegSetValueExW with what all questions have in common.
LSTATUS CreateKey(HKEY hParent, const WCHAR* szKey, HKEY* phKey, DWORD* pdwDisposition = nullptr);
LSTATUS SetBytes(HKEY hKey, const WCHAR* szName, DWORD dwType, std::string_view bytes);

// An empty key for one part of the questions; gone, with all below it, at the end of the part.
class CAnswersKey
{
public:
    CAnswersKey();
    ~CAnswersKey();
    CAnswersKey(const CAnswersKey&) = delete;
    CAnswersKey& operator=(const CAnswersKey&) = delete;

    HKEY Get() const
    {
        return m_key.Get();
    }

private:
    CUniqueKey m_key;
};

// Setting, querying and deleting values.
void RecordRegistryValues(CRecord& record);
} // namespace answers
