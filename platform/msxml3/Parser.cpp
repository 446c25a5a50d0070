#include "Parser.h"

#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <mutex>
#include <utility>

#include <malloc.h>

namespace platform::msxml3
{
namespace
{
// No huge documents. Entities are put in place of their references: without a document type there are only the five that
// stand for one character each.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_IGNORE_ENC | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

void Initialise()
{
    // Every operation makes documents and frees them again: memory that went back to the system with each would have to come
    // from there page by page for the next, which costs more the longer the text is.
    constexpr int cbMapped = 32 << 20;
    constexpr int cbKept = 256 << 20;
    mallopt(M_MMAP_THRESHOLD, cbMapped);
    mallopt(M_TRIM_THRESHOLD, cbKept);
    xmlInitParser();
}

// The library compares each attribute of an element with all the others, and looks up each name among thousands.
constexpr int maxAttributes = 4'000;
constexpr int maxMarks = 200'000; // tags and attributes, comments and instructions

// Why the library would take minutes for the text; null when it would not. Counts the quoted values from each "<" up to a ">"
// outside of them. A "<" begins anew even in a value, where it cannot stand, so that nothing before an element can hide its
// attributes.
const char16_t* ExcessOf(std::string_view text) noexcept
{
    int nMarks = 0;
    int nValues = 0;
    char place = '>'; // outside tags; '<' is in one, a quotation mark in a value
    for (const char ch : text)
    {
        if (ch == '<')
        {
            ++nMarks;
            nValues = 0;
        }
        if (ch == '<' || (place == '<' && ch == '>'))
            place = ch;
        else if (place == '<' && (ch == '"' || ch == '\''))
        {
            place = ch;
            ++nMarks;
            if (++nValues > maxAttributes)
                return u"An element has too many attributes.";
        }
        else if (ch == place && place != '>')
            place = '<';
        if (nMarks > maxMarks)
            return u"The text has too many tags and attributes.";
    }
    return nullptr;
}

// The text is UTF-16 whatever its declaration says, but a component that never heard of the encoding does not load it. A
// declaration of another form is the parser's to judge.
bool NamesUnknownEncoding(std::string_view text)
{
    const auto declaration = text.starts_with("<?xml") ? text.substr(0, text.find("?>")) : std::string_view();
    const auto nKeyword = declaration.find("encoding");
    const auto nOpening = nKeyword == declaration.npos ? nKeyword : declaration.find_first_of("\"'", nKeyword);
    const auto nClosing = nOpening == declaration.npos ? nOpening : declaration.find(declaration[nOpening], nOpening + 1);
    if (nClosing == declaration.npos)
        return false;
    const std::string name(declaration.substr(nOpening + 1, nClosing - nOpening - 1));
    xmlCharEncodingHandler* const pHandler = xmlFindCharEncodingHandler(name.c_str());
    if (pHandler)
        xmlCharEncCloseFunc(pHandler);
    return !name.empty() && !pHandler;
}

// Set for the one context, so that whoever else uses the library in this process keeps his own handling. Notes a wrong use of
// namespaces in the context; that a namespace's name is no URI is none.
void NoteError(void* pContext, xmlErrorPtr pError)
{
    const bool bIsAboutName = pError->code == XML_WAR_NS_URI || pError->code == XML_WAR_NS_URI_RELATIVE;
    if (pError->domain == XML_FROM_NAMESPACE && !bIsAboutName)
        *static_cast<bool*>(static_cast<xmlParserCtxt*>(pContext)->_private) = true;
}

// Called before anything in the document type is read.
void RefuseDocumentType(void* pContext, const xmlChar*, const xmlChar*, const xmlChar*)
{
    xmlStopParser(static_cast<xmlParserCtxt*>(pContext));
}

// The library's writer gives the name of a declared namespace as it stands, so it is kept the way it is to be written.
void EscapeNamespaces(xmlNode& element)
{
    for (xmlNs* pNamespace = element.nsDef; pNamespace; pNamespace = pNamespace->next)
    {
        if (!std::strpbrk(reinterpret_cast<const char*>(pNamespace->href), "<>&\"\r"))
            continue;
        xmlChar* const pEscaped = &Require(xmlEncodeSpecialChars(element.doc, pNamespace->href));
        xmlFree(const_cast<xmlChar*>(std::exchange(pNamespace->href, pEscaped)));
    }
}

void Finish(xmlNode& parent, bool bPreserveSpace)
{
    for (xmlNode *pNode = parent.children, *pNext = nullptr; pNode; pNode = pNext)
    {
        pNext = pNode->next;
        if (pNode->type == XML_ELEMENT_NODE)
        {
            EscapeNamespaces(*pNode);
            Finish(*pNode, bPreserveSpace);
        }
        else if (!bPreserveSpace && pNode->type == XML_TEXT_NODE && xmlIsBlankNode(pNode) &&
                 xmlNodeGetSpacePreserve(&parent) != 1)
        {
            xmlUnlinkNode(pNode);
            xmlFreeNode(pNode);
        }
    }
}

LoadError ErrorOf(const xmlParserCtxt& context, LONG lSkippedLines)
{
    if (context.errNo == XML_ERR_USER_STOP)
        return {u"The text has a document type.", 0};
    const xmlError& error = context.lastError;
    if (!error.message)
        return {u"The text is not an XML document.", 0};
    std::u16string reason = FromLibrary(reinterpret_cast<const xmlChar*>(error.message));
    reason.erase(reason.find_last_not_of(u'\n') + 1);
    return {std::move(reason), error.line + lSkippedLines};
}
} // namespace

DocumentPtr ReadXml(std::u16string_view text, bool bPreserveSpace, LoadError& error)
{
    static std::once_flag initialised;
    std::call_once(initialised, Initialise);

    if (text.starts_with(u'\uFEFF'))
        text.remove_prefix(1);
    const auto nSkipped = std::min(text.find_first_not_of(u" \t\r\n"), text.size());
    const auto nSkippedLines = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(nSkipped), u'\n');
    const auto converted = ToLibrary(text.substr(nSkipped));
    const auto refuse = [&](const char16_t* szReason) { return error = {szReason, 0}, DocumentPtr(); };
    if (!converted || converted->size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return refuse(u"The text is too long, or not well-formed UTF-16.");
    if (const char16_t* const szExcess = ExcessOf(*converted))
        return refuse(szExcess);
    if (NamesUnknownEncoding(*converted))
        return refuse(u"The text names an encoding that does not exist.");

    const LibraryPtr<xmlParserCtxt, xmlFreeParserCtxt> context(&Require(xmlNewParserCtxt()));
    bool bMisusesNamespaces = false;
    context->_private = &bMisusesNamespaces;
    context->sax->serror = NoteError;
    context->sax->internalSubset = RefuseDocumentType;
    DocumentPtr document(
        xmlCtxtReadMemory(context.get(), converted->data(), static_cast<int>(converted->size()), nullptr, nullptr, parseOptions));
    if (context->errNo == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();
    if (!document || context->errNo == XML_ERR_USER_STOP || bMisusesNamespaces)
    {
        error = ErrorOf(*context, static_cast<LONG>(nSkippedLines));
        return nullptr;
    }
    // Told only now: told before, the library converts every text once more. Its writer asks whether characters need escapes.
    if (!document->encoding)
        document->encoding = &Require(xmlStrdup(Units("UTF-8")));
    Finish(reinterpret_cast<xmlNode&>(*document), bPreserveSpace);
    return document;
}
} // namespace platform::msxml3
