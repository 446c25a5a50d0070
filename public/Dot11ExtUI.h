// What the module offers its hosts: the extension's interfaces, their identifiers, and the records that pass between
// them. Include this alone to use the module: C++17, with the folder of this file on the include path, linked with ole32,
// oleaut32 and uuid. docs/host-guide.md has the calls in their order.
//
// Threads: the class is registered for both apartment kinds, and no object keeps to one thread: every operation may be
// called on any, also on several at once, but for the dialog, which is one at a time in a process. An operation runs on the
// thread that calls it, which needs COM initialised.
// Texts: a BSTR passed in stays the caller's, is read up to its first zero, and may be null; a BSTR handed out is new and the
// caller's, to be released with SysFreeString. What an out parameter held before is overwritten, not released.
// Failures: besides what each operation tells, a null out pointer gives E_INVALIDARG (E_POINTER from a property's
// GetName and from QueryInterface), and memory that runs out gives E_OUTOFMEMORY. A failed operation leaves its out
// parameters as they were, except where it says otherwise and for a name without memory, which is null. No exception
// leaves the module.
// QueryInterface: an object answers IID_IUnknown and the identifier of its own class's interface, and gives E_NOINTERFACE
// with a null pointer for any other; IDot11ExtUIProperty has no identifier.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include "ConnectionContext.h"

// {6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}, the one class that the module serves. Activated for IID_IDot11ExtUI it is the root
// object; other interfaces are the module's own business. E_NOINTERFACE for IID_IUnknown, CLASS_E_NOAGGREGATION for an outer
// object.
inline constexpr CLSID CLSID_ExtUI = {0x6C0E5D21, 0x3B7A, 0x4F19, {0x9D, 0x42, 0x7E, 0x1A, 0x8C, 0x3F, 0x5B, 0x60}};
// {F2B676C7-DA6A-4167-A696-F55F5DFCBC8F}
inline constexpr IID IID_IDot11ExtUI = {0xF2B676C7, 0xDA6A, 0x4167, {0xA6, 0x96, 0xF5, 0x5F, 0x5D, 0xFC, 0xBC, 0x8F}};
// {B8D14F3A-27C6-4E5B-A1F0-93C5D7E2486B}
inline constexpr IID IID_ICCXExtUIKey = {0xB8D14F3A, 0x27C6, 0x4E5B, {0xA1, 0xF0, 0x93, 0xC5, 0xD7, 0xE2, 0x48, 0x6B}};
// {3E9A7C52-D1B4-4A86-8F27-C04B61E9D35A}
inline constexpr IID IID_ICCXExtUICon = {0x3E9A7C52, 0xD1B4, 0x4A86, {0x8F, 0x27, 0xC0, 0x4B, 0x61, 0xE9, 0xD3, 0x5A}};

// The kinds of property that the root object hands out, and what stands in the profile's IHV element for each: the
// connection property gets and gives what connectivity holds, the security property what security holds.
inline constexpr ULONG propertyKindConnection = 0;
inline constexpr ULONG propertyKindSecurity = 2;

// One choice of a property. The array that a property hands out is its own: valid while the property lives, never
// freed or changed by the caller.
struct Dot11ExtUIPropertyEntry
{
    DWORD dwDataKey;                 // the cipher behind the entry: 5 WEP, 2 TKIP, 4 AES
    ULONG dot11ExtUIDisplayInfoType; // 0
    BSTR bstrDisplayText;            // the property's; null when there was no memory for it
};

// A property as the platform's wireless-profile pages use it. In every profile operation bstrIHVProfile is the vendor's part
// of the profile being edited, for this property's place: the CCX element as a document of its own, or null where the
// profile has none. pConnectionContext is a Dot11ExtUIConnectionContext or the platform's own record behind it, borrowed for
// the call; it may be null. A text handed out holds this property's elements alone and takes the place of the one passed in.
// No operation keeps anything of a profile for the next.
//
// A text that cannot be read or holds no valid choice is no failure: the operation answers S_OK, with defaults (the connection
// property takes one that is empty or not well-formed for settings that are all off). What a property does not offer gives
// E_NOTIMPL and touches nothing. A security property that is not bound (Initialize) gives E_FAIL from all that it offers; the
// root object hands out bound ones.
class IDot11ExtUIProperty : public IUnknown
{
public:
    // The name to show: "CCKM", or the connection settings' in the user's language (empty when its text is missing).
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetName(BSTR* pbstrName) = 0;

    // Runs the property's dialog over hwndParent (which may be null) and waits for its end. *pbIsModified receives 1 after OK,
    // 0 after Cancel or for a hwndParent that is no window, and -1 when the dialog could not be made, with S_OK all the same.
    // Unless it is 0, *bstrModifiedIHVProfile receives a new text, or null where none could be written; that of -1 holds what
    // the dialog would have begun with, and nobody has confirmed it.
    // The dialog begins with the defaults for a null text, with them after a message box for settings out of their ranges, and
    // with everything off for a text that is empty or not well-formed. OK also stores the bands, at once, in the wireless
    // profile that the context names; where that fails nothing is said. Not offered by the security property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyShowDialog(HWND hwndParent, BSTR bstrIHVProfile, void* pConnectionContext,
                                                                   BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    // Whether the profile uses this property: TRUE as well for a text that is null, cannot be read or holds no valid choice.
    // Not offered by the connection property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                                    BOOL* pfIsSelected) = 0;

    // Makes the profile use this property. The caller passes *pbIsModified as FALSE; it becomes TRUE, and
    // *bstrModifiedIHVProfile receives a new text (null where none could be written), when the profile has to change. The
    // security property keeps a valid cipher and takes AES otherwise. With the connection property every profile has to
    // change: its text is written anew, from the defaults where it is null or a value is out of its range.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                                    BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    // Whether ShowDialog is offered: TRUE from the connection property, FALSE from the security property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyHasDialog(BOOL* pf) = 0;

    // The entries, and the index of the one that the profile stands for: the last one, AES, unless it names another. Any out
    // pointer may be null. A context with another kind than connectionKindPlain raises the flag that GetFlags tells; the
    // entries keep their texts. E_NOTIMPL for an uDisplayInfoIndex other than 0. Not offered by the connection property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                                       void* pConnectionContext, ULONG* pcEntries,
                                                                       ULONG* puDefaultSelection,
                                                                       Dot11ExtUIPropertyEntry** ppDot11ExtUIProperty) = 0;

    // Takes the entry that the user picked, which is borrowed and whose dwDataKey alone counts; a value that is none of a
    // cipher is taken too and gives a text without one. *pbIsModified tells whether the profile has to change;
    // *bstrModifiedIHVProfile is written only then (null where no text could be written). E_NOTIMPL for an uDisplayInfoIndex
    // other than 0, E_INVALIDARG for a null entry. Not offered by the connection property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                                       void* pConnectionContext,
                                                                       Dot11ExtUIPropertyEntry* pDot11ExtUIProperty,
                                                                       BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) = 0;

    // Whether qualified names are in force (0 or 1), and the property's kind value (2). The first is one for the process:
    // raised by GetDisplayInfo, cleared by the root object when it hands out security properties. Not offered by the
    // connection property.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetFlags(ULONG* puQualifiedNames, ULONG* puKind) = 0;

protected:
    ~IDot11ExtUIProperty() = default;
};

struct CCXSecurityPropertyInfo;

// The security property: adds an authentication with its ciphers to the choices of the host.
class ICCXExtUIKey : public IDot11ExtUIProperty
{
public:
    // Binds the property to its description and builds its entries. The root object does this before it hands the property
    // out; hosts do not. pInfo is borrowed and must outlive the property. E_INVALIDARG for null; after E_OUTOFMEMORY the
    // property is bound, without entries.
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
    // The extension's name, "Korvane". S_OK also when there is no memory for it, with a null *pbstrName. pbstrName must not
    // be null.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIGetFriendlyName(BSTR* pbstrName) = 0;

    // New properties of a kind, one for either kind. The array is the caller's, to be freed with CoTaskMemFree after releasing
    // each element. The properties are activated from the registered class: E_NOTIMPL for a kind that is not offered,
    // E_OUTOFMEMORY, or that activation's failure (REGDB_E_CLASSNOTREG, CO_E_NOTINITIALIZED, ...); *pcProperties is then 0 and
    // *pppProperties null. The out pointers must not be null.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIGetProperties(ULONG uPropertyKind, ULONG* pcProperties,
                                                              IDot11ExtUIProperty*** pppProperties) = 0;

    // E_NOTIMPL; the arguments are not looked at.
    virtual HRESULT STDMETHODCALLTYPE Dot11ExtUIReserved(void* pReserved1, void* pReserved2) = 0;

protected:
    ~IDot11ExtUI() = default;
};
