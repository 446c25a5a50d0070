// Faults of the document component's operations: methods of its objects, not imports.
#pragma once

#include "tests/support/windows/ImportThunk.h"

namespace tests::faults
{
// Lets the operations of all documents and their nodes ask the plans, from the first document on.
void WatchDocuments(void* pDocument);

bool IsDocumentClass(REFCLSID rclsid);

// CoCreateInstance: the creation of a document fails under a name of its own as well.
struct CreatesObjects : ReturnsCode<REGDB_E_CLASSNOTREG>
{
    template <class Original>
    static HRESULT Run(Original pOriginal, REFCLSID rclsid, IUnknown* pOuter, DWORD dwContext, REFIID riid, void** ppv)
    {
        if (IsDocumentClass(rclsid) && platform::testing::FaultFires("CreateDocument"))
            return static_cast<HRESULT>(platform::testing::FaultCode("CreateDocument", static_cast<DWORD>(E_OUTOFMEMORY)));
        const HRESULT hr = pOriginal(rclsid, pOuter, dwContext, riid, ppv);
        if (hr == S_OK && IsDocumentClass(rclsid))
            WatchDocuments(*ppv);
        return hr;
    }
};
} // namespace tests::faults
