// The interfaces as tables of functions: their slots are what is patched.
#define CINTERFACE
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <msxml2.h>

#include "tests/support/windows/DocumentFaults.h"
#include "tests/support/windows/FaultableImports.h"

#include <map>
#include <mutex>

namespace tests::faults
{
namespace
{
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The component's own function behind each patched slot. Written once, before any patched slot can be called.
std::map<const void*, void*>& Originals()
{
    static std::map<const void*, void*> originals;
    return originals;
}

template <class Table, class Function>
void** SlotIn(void* pTable, Function Table::*pMember)
{
    return reinterpret_cast<void**>(&(static_cast<Table*>(pTable)->*pMember));
}

template <CName name, auto pMember>
struct CMethodThunk;

template <CName name, class Table, class Object, class... Arguments, HRESULT (WINAPI* Table::*pMember)(Object*, Arguments...)>
struct CMethodThunk<name, pMember>
{
    static HRESULT WINAPI Call(Object* pThis, Arguments... arguments)
    {
        if (platform::testing::FaultFires(name.szText))
        {
            const auto hr = static_cast<HRESULT>(platform::testing::FaultCode(name.szText, static_cast<DWORD>(E_FAIL)));
            return FAILED(hr) ? hr : E_FAIL;
        }
        // The same member of another kind of node is another slot with another function.
        const void* const pSlot = SlotIn(const_cast<Table*>(pThis->lpVtbl), pMember);
        const auto pOriginal = reinterpret_cast<HRESULT(WINAPI*)(Object*, Arguments...)>(Originals().at(pSlot));
        return pOriginal(pThis, arguments...);
    }

    static void Patch(void* pTable)
    {
        void** const ppSlot = SlotIn(pTable, pMember);
        if (Originals().emplace(ppSlot, *ppSlot).second)
            Overwrite(ppSlot, reinterpret_cast<void*>(&Call));
    }
};

using Patch = void (*)(void* pTable);
#define METHOD(type, member) CMethodThunk<#member, &type##Vtbl::member>::Patch
constexpr Patch nodeMethods[] = {
    METHOD(IXMLDOMNode, selectSingleNode), METHOD(IXMLDOMNode, hasChildNodes), METHOD(IXMLDOMNode, get_firstChild),
    METHOD(IXMLDOMNode, get_nextSibling),  METHOD(IXMLDOMNode, get_nodeType),  METHOD(IXMLDOMNode, get_nodeValue),
    METHOD(IXMLDOMNode, put_text),         METHOD(IXMLDOMNode, insertBefore),  METHOD(IXMLDOMNode, removeChild),
    METHOD(IXMLDOMNode, appendChild),      METHOD(IXMLDOMNode, get_xml),
};
constexpr Patch documentMethods[] = {
    METHOD(IXMLDOMDocument, loadXML),
    METHOD(IXMLDOMDocument, get_documentElement),
    METHOD(IXMLDOMDocument, createElement),
};
constexpr Patch elementMethods[] = {METHOD(IXMLDOMElement, setAttribute)};
#undef METHOD

template <class Object>
void PatchObject(Object* pObject, std::initializer_list<std::pair<const Patch*, std::size_t>> lists)
{
    void* const pTable = const_cast<std::remove_const_t<std::remove_pointer_t<decltype(pObject->lpVtbl)>>*>(pObject->lpVtbl);
    for (const auto& [pPatches, nPatches] : lists)
        for (std::size_t i = 0; i < nPatches; ++i)
            pPatches[i](pTable);
}
} // namespace

bool IsDocumentClass(REFCLSID rclsid)
{
    return IsEqualCLSID(rclsid, documentClass);
}

void WatchDocuments(void* pObject)
{
    static std::once_flag once;
    std::call_once(once,
                   [=]
                   {
                       auto* const pDocument = static_cast<IXMLDOMDocument*>(pObject);
                       const BSTR bstrText = SysAllocString(L"a");
                       IXMLDOMElement* pElement = nullptr;
                       IXMLDOMText* pText = nullptr;
                       pDocument->lpVtbl->createElement(pDocument, bstrText, &pElement);
                       pDocument->lpVtbl->createTextNode(pDocument, bstrText, &pText);
                       SysFreeString(bstrText);
                       const std::pair<const Patch*, std::size_t> nodes = {nodeMethods, std::size(nodeMethods)};
                       PatchObject(pElement, {nodes, {elementMethods, std::size(elementMethods)}});
                       PatchObject(pText, {nodes});
                       PatchObject(pDocument, {nodes, {documentMethods, std::size(documentMethods)}});
                       pElement->lpVtbl->Release(pElement);
                       pText->lpVtbl->Release(pText);
                   });
}
} // namespace tests::faults
