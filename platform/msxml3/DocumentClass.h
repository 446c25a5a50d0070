// The XML document class, the one class that COM activation finds without the registry.
#pragma once

#include <objbase.h>

namespace platform
{
// {2933BF90-7B36-11D2-B20E-00C04F983E60}
extern const CLSID documentClass;

// The class object of the document class, as DllGetClassObject would give it.
HRESULT GetDocumentClassObject(REFIID riid, void** ppv);
} // namespace platform
