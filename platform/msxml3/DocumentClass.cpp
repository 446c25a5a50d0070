#include "DocumentClass.h"

#include "NodeObject.h"

namespace platform
{
namespace
{
// One for the process, never freed; its references are not worth counting.
class CDocumentFactory final : public IClassFactory
{
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        const bool bKnown = riid == IID_IUnknown || riid == IID_IClassFactory;
        *ppvObject = bKnown ? static_cast<IClassFactory*>(this) : nullptr;
        return bKnown ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override
    {
        return 2;
    }
    STDMETHODIMP_(ULONG) Release() override
    {
        return 1;
    }
    STDMETHODIMP CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        *ppvObject = nullptr;
        return msxml3::Perform(
            "CreateDocument", [&] { return Create(pUnkOuter, riid, ppvObject); }, E_OUTOFMEMORY);
    }
    STDMETHODIMP LockServer(BOOL) override
    {
        return S_OK; // there is nothing to unload
    }

private:
    static HRESULT Create(IUnknown* pUnkOuter, REFIID riid, void** ppvObject)
    {
        if (pUnkOuter)
            return CLASS_E_NOAGGREGATION;
        IXMLDOMDocument* const pDocument = msxml3::NewDocumentObject(std::make_shared<msxml3::CTree>());
        const HRESULT hr = pDocument->QueryInterface(riid, ppvObject);
        pDocument->Release();
        return hr;
    }
};
} // namespace

const CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

HRESULT GetDocumentClassObject(REFIID riid, void** ppv)
{
    static CDocumentFactory factory;
    return factory.QueryInterface(riid, ppv);
}
} // namespace platform
