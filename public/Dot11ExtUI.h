// What the module offers its hosts: the extension's interfaces, their identifiers, and the records that pass between
// them. Include this alone to use the module.
//
// Threads: the class is registered for both apartment kinds; every operation may be called on any thread, one dialog at
// a time in a process.
// Texts: a BSTR passed in stays the caller's, and a null one reads as empty; a BSTR handed out is new and the caller's,
// to be released with SysFreeString.
// Failures: a null out pointer gives E_INVALIDARG (E_POINTER from the name getters); an allocation that fails gives
// E_OUTOFMEMORY; what a property does not offer gives E_NOTIMPL and touches nothing.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include "public/ConnectionContext.h"

// {6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}, the one class that the module serves.
inline constexpr CLSID CLSID_ExtUI = {0x6C0E5D21, 0x3B7A, 0x4F19, {0x9D, 0x42, 0x7E, 0x1A, 0x8C, 0x3F, 0x5B, 0x60}};
// {F2B676C7-DA6A-4167-A696-F55F5DFCBC8F}
inline constexpr IID IID_IDot11ExtUI = {0xF2B676C7, 0xDA6A, 0x4167, {0xA6, 0x96, 0xF5, 0x5F, 0x5D, 0xFC, 0xBC, 0x8F}};
// {B8D14F3A-27C6-4E5B-A1F0-93C5D7E2486B}
inline constexpr IID IID_ICCXExtUIKey = {0xB8D14F3A, 0x27C6, 0x4E5B, {0xA1, 0xF0, 0x93, 0xC5, 0xD7, 0xE2, 0x48, 0x6B}};
// {3E9A7C52-D1B4-4A86-8F27-C04B61E9D35A}
inline constexpr IID IID_ICCXExtUICon = {0x3E9A7C52, 0xD1B4, 0x4A86, {0x8F, 0x27, 0xC0, 0x4B, 0x61, 0xE9, 0xD3, 0x5A}};

// The kinds of property that the root object hands out.
inline constexpr ULONG propertyKindConnection = 0;
inline constexpr ULONG propertyKindSecurity = 2;

// One choice of a property. The array that a property hands out is its own: valid while the property lives, never
// freed by the caller.
struct Dot11ExtUIPropertyEntry
{
    DWORD dwDataKey;                 // the value behind the entry (the cipher)
    ULONG dot11ExtUIDisplayInfoType; // 0
    BSTR bstrDisplayText;            // the property's
};

// A property as the platform's wireless-profile pages use it. bstrIHVProfile is the vendor's part of the profile being
// edited, pConnectionContext the host's record behind CConnectionContextReader (it may be null).
class IDot11ExtUIProperty : public IUnknown
{
public:
    // The name to show; E_FAIL from a property that is not bound yet, E_POINTER, E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetName(BSTR* pbstrName) = 0;

    // Runs the property's dialog over hwndParent and waits for its end. *pbIsModified receives 1 after OK, 0 after
    // Cancel, -1 when the dialog could not be made; when it is not 0, *bstrModifiedIHVProfile receives the new text.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyShowDialog(HWND hwndParent, BSTR bstrIHVProfile, void* pConnectionContext,
                                                                   BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    // Whether the profile uses this property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                                    BOOL* pfIsSelected) = 0;

    // Makes the profile use this property. The caller passes *pbIsModified as FALSE; it becomes TRUE, and
    // *bstrModifiedIHVProfile is written, when the profile has to change.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                                    BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyHasDialog(BOOL* pf) = 0;

    // The entries and the one that the profile stands for. uDisplayInfoIndex must be 0, else E_NOTIMPL. Any out pointer
    // may be null.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                                       void* pConnectionContext, ULONG* pcEntries,
                                                                       ULONG* puDefaultSelection,
                                                                       Dot11ExtUIPropertyEntry** ppDot11ExtUIProperty) = 0;

    // Takes the entry that the user picked. *pbIsModified tells whether the profile has to change;
    // *bstrModifiedIHVProfile is written only then.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                                       void* pConnectionContext,
                                                                       Dot11ExtUIPropertyEntry* pDot11ExtUIProperty,
                                                                       BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    // Whether qualified names are in force (0 or 1), and the property's kind value.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetFlags(ULONG* puQualifiedNames, ULONG* puKind) = 0;

protected:
    ~IDot11ExtUIProperty() = default;
};

struct CCXSecurityPropertyInfo;

// The security property: adds an authentication with its ciphers to the choices of the host.
class ICCXExtUIKey : public IDot11ExtUIProperty
{
public:
    // Binds the property to its description and builds its entries. pInfo is borrowed and must outlive the property.
    // E_INVALIDARG for null, E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE Initialize(CCXSecurityPropertyInfo* pInfo) = 0;

protected:
    ~ICCXExtUIKey() = default;
};

// The connection property: the connection settings with their dialog.
class ICCXExtUICon : public IDot11ExtUIProperty
{
protected:
    ~ICCXExtUICon() = default;
};

// The root object, which a host activates.
class IDot11ExtUI : public IUnknown
{
public:
    // pbstrName must not be null.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIGetFriendlyName(BSTR* pbstrName) = 0;

    // New properties of a kind. The array is the caller's, to be freed with CoTaskMemFree after releasing each element.
    // E_NOTIMPL for a kind that is not offered, E_OUTOFMEMORY, or the activation's failure; *pcProperties is then 0 and
    // *pppProperties null. The out pointers must not be null.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIGetProperties(ULONG uPropertyKind, ULONG* pcProperties,
                                                              IDot11ExtUIProperty*** pppProperties) = 0;

    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIReserved(void* pReserved1, void* pReserved2) = 0;

protected:
    ~IDot11ExtUI() = default;
};
