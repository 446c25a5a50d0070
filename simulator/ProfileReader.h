// What a profile text says about itself.
#pragma once

#include "values/ComRef.h"
#include "values/WideText.h"

#include <msxml2.h>
#include <objbase.h>
#include <windows.h>

namespace simulator
{
// COM on the calling thread while the object lives: initialised when the thread had not done it, left alone when the
// thread has chosen the other kind of apartment.
class CComScope
{
public:
    CComScope();
    ~CComScope();
    CComScope(const CComScope&) = delete;
    CComScope& operator=(const CComScope&) = delete;

private:
    bool m_bOwned;
};

struct ProfileVerdict
{
    DWORD dwReason;   // reasonSuccess, or why the service refuses the text
    CWideString name; // with reasonSuccess only
};

// Reads profiles through the platform's document component. Lives and is used on one thread.
class CProfileReader
{
public:
    // Throws CServiceError when the document component cannot be had.
    CProfileReader();

    // Accepts a well-formed document with the root WLANProfile and a name of 1 to 255 code units, without elements in it.
    ProfileVerdict Read(CWideView text);

private:
    CComScope m_scope; // first: it outlives the other
    CComRef<IXMLDOMDocument> m_document;
};
} // namespace simulator
