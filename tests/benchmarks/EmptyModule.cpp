// A module that imports what the real one does, does nothing when it is loaded, and serves an empty class.
#include <windows.h>

#include <objbase.h>

#include <atomic>

namespace
{
// Its own factory.
class CEmpty final : public IClassFactory
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** ppvObject) override
    {
        AddRef();
        *ppvObject = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return static_cast<ULONG>(++m_lReferences);
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG lLeft = --m_lReferences;
        if (lLeft == 0)
            delete this;
        return static_cast<ULONG>(lLeft);
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID riid, void** ppvObject) override
    {
        return (new CEmpty)->QueryInterface(riid, ppvObject);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override
    {
        return S_OK;
    }

private:
    std::atomic<LONG> m_lReferences = 0;
};
} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID)
{
    return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID riid, LPVOID* ppv)
{
    return (new CEmpty)->QueryInterface(riid, ppv);
}

extern "C" HRESULT WINAPI DllCanUnloadNow()
{
    return S_OK;
}
