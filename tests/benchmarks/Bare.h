// The bare side: the calls of the platform that an operation cannot do without, straight against its interfaces. Of the module's
// nothing is in use here but the owners of strings and references, which add no call.
#pragma once

#include "values/Bstr.h"
#include "values/ComRef.h"

#include <msxml2.h>

#include <memory>
#include <span>

namespace bench
{
using Node = CComRef<IXMLDOMNode>;

// One document, made by activation as each reading and each writing makes one: its four options set, a copy of the text loaded.
struct BareDocument
{
    explicit BareDocument(const WCHAR* szText);

    CComRef<IXMLDOMDocument> document;
    Node root;
};

// What is asked of a document, in order: a selection below what the last one of the level above found, and, where it finds a
// field, its text. Nothing is asked below what is not there.
struct Look
{
    std::size_t nLevel;
    const WCHAR* szPath;
    bool bIsField;
};
void Read(const WCHAR* szText, std::span<const Look> looks);

// What is put into a document, in order: an element, with its text where it has one, below the last one of the level above.
struct Element
{
    std::size_t nLevel;
    const WCHAR* szName;
    const WCHAR* szText;
};
// The text form of the root with its namespace.
CBstr Write(std::span<const Element> elements);

// The message, and the line of it in a zeroed buffer.
std::unique_ptr<WCHAR[]> FormLine(const WCHAR* szFormat, ...);
// The echo, and its way out of the process's buffer, since whoever reads the echo of a host that lives for hours waits for the
// line.
void Echo(const WCHAR* szLine);
// One line, the log being off.
template <class... Arguments>
void Line(const WCHAR* szFormat, Arguments... arguments)
{
    Echo(FormLine(szFormat, arguments...).get());
}
} // namespace bench
