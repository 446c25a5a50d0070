#include "Writer.h"

namespace platform::msxml3
{
namespace
{
const char* Characters(const xmlChar* pText) noexcept
{
    return reinterpret_cast<const char*>(pText);
}

std::string Dump(xmlNode& node)
{
    const LibraryPtr<xmlBuffer, xmlBufferFree> buffer(&Require(xmlBufferCreate()));
    xmlBufferSetAllocationScheme(buffer.get(), XML_BUFFER_ALLOC_DOUBLEIT);
    if (xmlNodeDump(buffer.get(), node.doc, &node, 0, 0) < 0)
        throw std::bad_alloc();
    return Characters(xmlBufferContent(buffer.get()));
}

std::u16string WithLineEnds(const std::string& text)
{
    std::u16string ended;
    for (const char16_t unit : FromLibrary(Units(text)))
    {
        if (unit == u'\n')
            ended += u'\r';
        ended += unit;
    }
    return ended;
}
} // namespace

std::u16string WriteElement(xmlNode& element)
{
    return WithLineEnds(Dump(element));
}

std::u16string WriteDocument(const xmlDoc& document)
{
    std::string text;
    if (document.standalone != -1) // there is a declaration
    {
        text.append("<?xml version=\"").append(Characters(document.version));
        text += document.standalone == 1 ? "\" standalone=\"yes" : document.standalone == 0 ? "\" standalone=\"no" : "";
        text += "\"?>\n";
    }
    for (xmlNode* pNode = document.children; pNode; pNode = pNode->next)
        text += Dump(*pNode) + "\n";
    return WithLineEnds(text);
}
} // namespace platform::msxml3
