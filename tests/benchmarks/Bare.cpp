#include "tests/benchmarks/Bare.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace bench
{
namespace
{
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
using Levels = std::array<Node, 6>;
} // namespace

BareDocument::BareDocument(const WCHAR* szText)
{
    CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, document.PutVoid());
    document->put_async(VARIANT_FALSE);
    document->put_validateOnParse(VARIANT_FALSE);
    document->put_resolveExternals(VARIANT_FALSE);
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    const CBstr text(szText);
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    document->loadXML(text.Get(), &bLoaded);
    // An element is a node.
    IXMLDOMElement* pRoot = nullptr;
    document->get_documentElement(&pRoot);
    *root.Put() = pRoot;
}

void Read(const WCHAR* szText, std::span<const Look> looks)
{
    const BareDocument document(szText);
    Levels found = {document.root};
    for (const auto& look : looks)
    {
        if (!found[look.nLevel])
            continue;
        const CBstr path(look.szPath);
        Node node;
        found[look.nLevel]->selectSingleNode(path.Get(), node.Put());
        if (look.bIsField && node)
        {
            CBstr text;
            node->get_text(text.Put());
        }
        found[look.nLevel + 1] = std::move(node);
    }
}

CBstr Write(std::span<const Element> elements)
{
    const BareDocument document(OLESTR("<CCX/>"));
    Levels made = {document.root};
    for (const auto& element : elements)
    {
        const CBstr name(element.szName);
        CComRef<IXMLDOMElement> created;
        Node appended;
        document.document->createElement(name.Get(), created.Put());
        made[element.nLevel]->appendChild(created.Get(), appended.Put());
        if (element.szText)
            appended->put_text(CBstr(element.szText).Get());
        made[element.nLevel + 1] = std::move(appended);
    }
    const CBstr attribute(OLESTR("xmlns"));
    const CBstr uri(OLESTR("http://www.korvane.com/CCX"));
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = uri.Get();
    static_cast<IXMLDOMElement*>(document.root.Get())->setAttribute(attribute.Get(), value);
    CBstr xml;
    document.root->get_xml(xml.Put());
    return xml;
}

std::unique_ptr<WCHAR[]> FormLine(const WCHAR* szFormat, ...)
{
    constexpr std::size_t cchMessage = 4096;
    constexpr std::size_t cchLine = 2000;
    WCHAR szMessage[cchMessage];
    szMessage[cchMessage - 1] = WCHAR{};
    va_list arguments;
    va_start(arguments, szFormat);
    _vsnwprintf(szMessage, cchMessage - 1, szFormat, arguments);
    va_end(arguments);

    auto szLine = std::make_unique<WCHAR[]>(cchLine + 1);
    SYSTEMTIME time = {};
    GetLocalTime(&time);
    _snwprintf(szLine.get(), cchLine, OLESTR("%02d:%02d:%02d.%03d [%8X]   %s: %s"), time.wHour, time.wMinute, time.wSecond,
               time.wMilliseconds, GetCurrentThreadId(), OLESTR("Ihvui"), szMessage);
    return szLine;
}

void Echo(const WCHAR* szLine)
{
    _putws(szLine);
    std::fflush(stdout);
}
} // namespace bench
