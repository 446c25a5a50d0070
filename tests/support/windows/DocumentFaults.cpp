// Faults of the document component's operations: methods of its objects, not imports.
// The interfaces as tables of functions: their slots are what is diverted.
#define CINTERFACE
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <msxml2.h>

#include "host/Library.h"
#include "platform/testing/FaultPoint.h"
#include "tests/support/windows/Diversion.h"

#include <cstddef>
#include <mutex>
#include <span>

namespace tests::faults
{
namespace
{
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

struct Method
{
    PlatformFunction function;
    std::size_t nSlot;
};
#define METHOD(type, member)                                                                                                     \
    {                                                                                                                            \
        {#member, Fails::WithCode, static_cast<DWORD>(E_FAIL)}, offsetof(type##Vtbl, member) / sizeof(void*)                     \
    }
constexpr Method nodeMethods[] = {
    METHOD(IXMLDOMNode, selectSingleNode), METHOD(IXMLDOMNode, hasChildNodes), METHOD(IXMLDOMNode, get_firstChild),
    METHOD(IXMLDOMNode, get_nextSibling),  METHOD(IXMLDOMNode, get_nodeType),  METHOD(IXMLDOMNode, get_nodeValue),
    METHOD(IXMLDOMNode, put_text),         METHOD(IXMLDOMNode, insertBefore),  METHOD(IXMLDOMNode, removeChild),
    METHOD(IXMLDOMNode, appendChild),      METHOD(IXMLDOMNode, get_xml),
};
constexpr Method documentMethods[] = {
    METHOD(IXMLDOMDocument, loadXML),
    METHOD(IXMLDOMDocument, get_documentElement),
    METHOD(IXMLDOMDocument, createElement),
};
constexpr Method elementMethods[] = {METHOD(IXMLDOMElement, setAttribute)};
#undef METHOD

// The same method of another kind of node is another function in another table.
void Watch(void* pObject, std::span<const Method> methods)
{
    for (const auto& method : methods)
        Divert(*static_cast<void***>(pObject) + method.nSlot, method.function);
}

void WatchDocuments(IXMLDOMDocument* pDocument)
{
    const BSTR bstrText = SysAllocString(L"a");
    IXMLDOMElement* pElement = nullptr;
    IXMLDOMText* pText = nullptr;
    pDocument->lpVtbl->createElement(pDocument, bstrText, &pElement);
    pDocument->lpVtbl->createTextNode(pDocument, bstrText, &pText);
    SysFreeString(bstrText);
    for (void* const pNode : {static_cast<void*>(pDocument), static_cast<void*>(pElement), static_cast<void*>(pText)})
        Watch(pNode, nodeMethods);
    Watch(pDocument, documentMethods);
    Watch(pElement, elementMethods);
    pElement->lpVtbl->Release(pElement);
    pText->lpVtbl->Release(pText);
}
} // namespace

HRESULT WINAPI CreateWatched(REFCLSID rclsid, IUnknown* pOuter, DWORD dwContext, REFIID riid, void** ppv)
{
    // The program's own import of it leads here.
    static const auto pCreate = Export<decltype(&CoCreateInstance)>(GetModuleHandleW(L"ole32.dll"), "CoCreateInstance");
    const bool bDocument = IsEqualCLSID(rclsid, documentClass);
    if (bDocument && platform::testing::FaultFires("CreateDocument"))
        return static_cast<HRESULT>(platform::testing::FaultCode("CreateDocument", static_cast<DWORD>(E_OUTOFMEMORY)));
    const HRESULT hr = pCreate(rclsid, pOuter, dwContext, riid, ppv);
    static std::once_flag once;
    if (bDocument && hr == S_OK)
        std::call_once(once, WatchDocuments, static_cast<IXMLDOMDocument*>(*ppv));
    return hr;
}
} // namespace tests::faults
