// A host of the extension in one file: what a page asks and changes while its user chooses. docs/host-guide.md explains it.
//     minimal-host MODULE
// The module echoes its trace to standard output; this program leaves that to it and speaks on standard error.
#include "Dot11ExtUI.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace
{
// A host that goes on after a failure releases what it holds; this one ends.
void Require(HRESULT hr, const char* szStep)
{
    if (hr == S_OK)
        return;
    std::fprintf(stderr, "%s: failed with %08X\n", szStep, static_cast<unsigned>(hr));
    std::exit(1);
}

void Print(const char* szWhat, const OLECHAR* szText)
{
    std::fprintf(stderr, "%s: ", szWhat);
    for (; szText && *szText; ++szText)
        std::fputc(*szText < 0x7F ? static_cast<char>(*szText) : '?', stderr);
    std::fputc('\n', stderr);
}

// What an operation that may change the text has answered: a new text takes the place of the old.
void Take(const char* szOperation, HRESULT hr, BOOL bIsModified, BSTR bstrModified, BSTR* pbstrText)
{
    Require(hr == S_OK && bIsModified && !bstrModified ? E_FAIL : hr, szOperation);
    if (bIsModified)
        std::swap(*pbstrText, bstrModified);
    SysFreeString(bstrModified);
    Print(szOperation, *pbstrText);
}

void UseProperty(IDot11ExtUIProperty& property, void* pContext, BSTR* pbstrText)
{
    BSTR bstrName = nullptr;
    Require(property.Dot11ExtUIPropertyGetName(&bstrName), "GetName");
    Print("GetName", bstrName);
    SysFreeString(bstrName);
    BOOL bHasDialog = FALSE, bIsSelected = FALSE;
    Require(property.Dot11ExtUIPropertyHasDialog(&bHasDialog), "HasDialog");
    HRESULT hr = property.Dot11ExtUIPropertyGetSelected(*pbstrText, pContext, &bIsSelected);
    std::fprintf(stderr, "HasDialog: %d, GetSelected: %s\n", bHasDialog, hr == S_OK ? (bIsSelected ? "1" : "0") : "not offered");
    BOOL bIsModified = FALSE;
    BSTR bstrModified = nullptr;
    hr = property.Dot11ExtUIPropertySetSelected(*pbstrText, pContext, &bstrModified, &bIsModified);
    Take("SetSelected", hr, bIsModified, bstrModified, pbstrText);

    ULONG cEntries = 0, uDefault = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr; // stays the property's
    hr = property.Dot11ExtUIPropertyGetDisplayInfo(0, *pbstrText, pContext, &cEntries, &uDefault, &pEntries);
    if (hr != S_OK || cEntries == 0) // not offered
        return;
    for (ULONG n = 0; n < cEntries; ++n)
        Print(n == uDefault ? "GetDisplayInfo, default" : "GetDisplayInfo", pEntries[n].bstrDisplayText);
    // Told also where the user leaves the default: after SetSelected the text may name another cipher than is shown, or none.
    bstrModified = nullptr;
    hr = property.Dot11ExtUIPropertySetDisplayInfo(0, *pbstrText, pContext, &pEntries[uDefault], &bstrModified, &bIsModified);
    Take("SetDisplayInfo", hr, bIsModified, bstrModified, pbstrText);
}

// The text is what the profile's IHV element has in the place of this kind.
void UseProperties(IDot11ExtUI& root, ULONG uKind, const OLECHAR* szText)
{
    Dot11ExtUIConnectionContext context{}; // the dialog reads the profile's name and flags and the adapter as well
    context.connectionKind = connectionKindPlain;
    ULONG cProperties = 0;
    IDot11ExtUIProperty** ppProperties = nullptr;
    Require(root.Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties), "GetProperties");
    BSTR bstrText = SysAllocString(szText);
    for (ULONG n = 0; n < cProperties; ppProperties[n++]->Release())
        UseProperty(*ppProperties[n], &context, &bstrText);
    SysFreeString(bstrText);
    CoTaskMemFree(ppProperties);
}
} // namespace

int main(int argc, char** argv)
{
    Require(argc == 2 ? S_OK : E_INVALIDARG, "one argument, the module's file");
    Require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); // the module takes one back when it is unloaded
    const HMODULE hModule = LoadLibraryW(std::filesystem::absolute(argv[1]).string<OLECHAR>().c_str());
    Require(hModule ? S_OK : HRESULT_FROM_WIN32(GetLastError()), "LoadLibrary");
    using AnyFunction = void (*)();
    const auto find = [&](const char* szName) { return reinterpret_cast<AnyFunction>(GetProcAddress(hModule, szName)); };
    const auto pGetClassObject = reinterpret_cast<decltype(&DllGetClassObject)>(find("DllGetClassObject"));
    const auto pCanUnloadNow = reinterpret_cast<decltype(&DllCanUnloadNow)>(find("DllCanUnloadNow"));
    Require(pGetClassObject && pCanUnloadNow ? S_OK : E_FAIL, "GetProcAddress");

    // The module activates its own class, which has to be known for that: in this process, or by registration.
    IClassFactory* pFactory = nullptr;
    Require(pGetClassObject(CLSID_ExtUI, IID_IClassFactory, reinterpret_cast<void**>(&pFactory)), "DllGetClassObject");
    DWORD dwClass = 0;
    HRESULT hr = CoRegisterClassObject(CLSID_ExtUI, pFactory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &dwClass);
    Require(hr, "CoRegisterClassObject");
    pFactory->Release();
    IDot11ExtUI* pRoot = nullptr;
    hr = CoCreateInstance(CLSID_ExtUI, nullptr, CLSCTX_INPROC_SERVER, IID_IDot11ExtUI, reinterpret_cast<void**>(&pRoot));
    Require(hr, "CoCreateInstance");
    BSTR bstrName = nullptr;
    Require(pRoot->Dot11ExtUIGetFriendlyName(&bstrName), "GetFriendlyName");
    Print("GetFriendlyName", bstrName);
    SysFreeString(bstrName);
    UseProperties(*pRoot, propertyKindSecurity, OLESTR("<CCX><openNetwork/></CCX>"));
    UseProperties(*pRoot, propertyKindConnection, OLESTR("<CCX><RadioMeasurement><disabled/></RadioMeasurement></CCX>"));
    pRoot->Release();
    CoRevokeClassObject(dwClass);
    Require(pCanUnloadNow(), "DllCanUnloadNow");
    FreeLibrary(hModule);
    CoUninitialize();
    std::fputs("unloaded\n", stderr);
}
