#include "Parser.h"

#include "DeclaredEncoding.h"
#include "XmlText.h"

#include "platform/kernel32/Unicode.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <mutex>
#include <new>

namespace platform::msxml3
{
namespace
{
struct FreeContext
{
    void operator()(xmlParserCtxt* pContext) const noexcept
    {
        if (pContext->myDoc)
            xmlFreeDoc(pContext->myDoc);
        pContext->myDoc = nullptr;
        xmlFreeParserCtxt(pContext);
    }
};
using ContextPtr = std::unique_ptr<xmlParserCtxt, FreeContext>;

struct FreeBuffer
{
    void operator()(xmlBuffer* pBuffer) const noexcept
    {
        xmlBufferFree(pBuffer);
    }
};

// No expansion by the library, which would read external entities from files; no huge documents.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_IGNORE_ENC | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

// What internal entities may add to a document, in code units and nodes.
constexpr std::size_t maxExpansion = 1'000'000;
constexpr std::size_t maxDepth = 512; // the library's limit, which it applies to an entity's text on its own

std::u16string ToText(const xmlChar* pText)
{
    return pText ? FromUtf8(reinterpret_cast<const char*>(pText)) : std::u16string();
}

std::u16string QualifiedName(const xmlNs* pNamespace, const xmlChar* pName)
{
    std::u16string name = ToText(pName);
    return pNamespace && pNamespace->prefix ? ToText(pNamespace->prefix) + u":" + name : name;
}

class CExpansionTooLarge
{
};

// Copies the library's nodes into the tree, with internal entities put in place of their references.
class CCopy
{
public:
    CCopy(CTree& tree, const xmlDoc& document) : m_tree(tree)
    {
        // The platform shows the declaration as an instruction. -1 says that there is none.
        if (document.standalone != -1)
        {
            std::u16string value = u"version=\"" + ToText(document.version) + u"\"";
            if (document.standalone >= 0)
                value += document.standalone ? u" standalone=\"yes\"" : u" standalone=\"no\"";
            Link(tree.Root(), tree.NewNode(NODE_PROCESSING_INSTRUCTION, u"xml", value), nullptr);
        }
        CopyChildren(document.children, tree.Root(), {});
    }

private:
    struct Surroundings
    {
        bool bPreserve = false;
        bool bInEntity = false;
        std::size_t uDepth = 0;
    };

    void CopyChildren(const xmlNode* pSource, Node& parent, Surroundings around)
    {
        if (++around.uDepth > maxDepth)
            throw CExpansionTooLarge();
        for (; pSource; pSource = pSource->next)
            CopyNode(*pSource, parent, around);
        DropWhiteSpace(parent, around);
    }

    void CopyNode(const xmlNode& source, Node& parent, Surroundings around)
    {
        if (around.bInEntity)
            Expand(1);
        if (source.type == XML_TEXT_NODE)
            return AppendText(ToText(source.content), parent, around);
        if (source.type == XML_ENTITY_REF_NODE && IsExpandable(source))
        {
            around.bInEntity = true;
            if (++around.uDepth > maxDepth)
                throw CExpansionTooLarge();
            for (const xmlNode* pChild = source.children->children; pChild; pChild = pChild->next)
                CopyNode(*pChild, parent, around);
            return;
        }
        DropWhiteSpace(parent, around);
        switch (source.type)
        {
        case XML_ELEMENT_NODE:
            return CopyElement(source, parent, around);
        case XML_CDATA_SECTION_NODE:
            return Append(parent, NODE_CDATA_SECTION, u"#cdata-section", source, around);
        case XML_COMMENT_NODE:
            return Append(parent, NODE_COMMENT, u"#comment", source, around);
        case XML_PI_NODE:
            return Append(parent, NODE_PROCESSING_INSTRUCTION, ToText(source.name), source, around);
        case XML_ENTITY_REF_NODE:
            return Link(parent, m_tree.NewNode(NODE_ENTITY_REFERENCE, ToText(source.name)), nullptr);
        case XML_DTD_NODE:
            return CopyDocumentType(source, parent);
        default:
            return;
        }
    }

    void CopyElement(const xmlNode& source, Node& parent, Surroundings around)
    {
        Node& element = m_tree.NewNode(NODE_ELEMENT, QualifiedName(source.ns, source.name));
        if (source.ns)
            element.namespaceUri = ToText(source.ns->href);
        Link(parent, element, nullptr);
        for (const xmlNs* pDeclared = source.nsDef; pDeclared; pDeclared = pDeclared->next)
        {
            const std::u16string name = pDeclared->prefix ? u"xmlns:" + ToText(pDeclared->prefix) : u"xmlns";
            Node& attribute = m_tree.NewNode(NODE_ATTRIBUTE, name, ToText(pDeclared->href));
            attribute.bDeclaresNamespace = true;
            element.attributes.push_back(&attribute);
        }
        for (const xmlAttr* pAttribute = source.properties; pAttribute; pAttribute = pAttribute->next)
        {
            Node& attribute = m_tree.NewNode(NODE_ATTRIBUTE, QualifiedName(pAttribute->ns, pAttribute->name));
            if (pAttribute->ns)
                attribute.namespaceUri = ToText(pAttribute->ns->href);
            AppendValue(pAttribute->children, attribute.value, around);
            element.attributes.push_back(&attribute);
        }
        if (const Node* pSpace = FindAttribute(element, u"xml:space"))
            around.bPreserve = pSpace->value == u"preserve";
        CopyChildren(source.children, element, around);
    }

    void Append(Node& parent, DOMNodeType type, std::u16string_view name, const xmlNode& source, const Surroundings& around)
    {
        const std::u16string value = ToText(source.content);
        if (around.bInEntity)
            Expand(value.size());
        Link(parent, m_tree.NewNode(type, name, value), nullptr);
    }

    // Text next to text becomes one node, as if entities had been written out.
    void AppendText(const std::u16string& text, Node& parent, const Surroundings& around)
    {
        if (around.bInEntity)
            Expand(text.size());
        if (parent.pLast && parent.pLast->type == NODE_TEXT)
            parent.pLast->value += text;
        else
            Link(parent, m_tree.NewNode(NODE_TEXT, u"#text", text), nullptr);
    }

    void AppendValue(const xmlNode* pSource, std::u16string& value, Surroundings around)
    {
        if (++around.uDepth > maxDepth)
            throw CExpansionTooLarge();
        for (; pSource; pSource = pSource->next)
        {
            if (around.bInEntity)
                Expand(1);
            if (pSource->type == XML_ENTITY_REF_NODE && IsExpandable(*pSource))
            {
                Surroundings within = around;
                within.bInEntity = true;
                AppendValue(pSource->children->children, value, within);
            }
            else if (pSource->type == XML_TEXT_NODE)
            {
                const std::u16string text = ToText(pSource->content);
                if (around.bInEntity)
                    Expand(text.size());
                value += text;
            }
        }
    }

    // Once a text node is complete: nothing but white space counts for nothing unless it was asked for.
    void DropWhiteSpace(Node& parent, const Surroundings& around) noexcept
    {
        Node* pText = parent.pLast;
        if (pText && pText->type == NODE_TEXT && !m_tree.PreservesWhiteSpace() && !around.bPreserve &&
            IsAllXmlSpace(pText->value))
            Unlink(*pText);
    }

    void CopyDocumentType(const xmlNode& source, Node& parent)
    {
        const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
        if (!buffer || xmlNodeDump(buffer.get(), source.doc, const_cast<xmlNode*>(&source), 0, 0) < 0)
            throw std::bad_alloc();
        Link(parent, m_tree.NewNode(NODE_DOCUMENT_TYPE, ToText(source.name), ToText(xmlBufferContent(buffer.get()))), nullptr);
    }

    static bool IsExpandable(const xmlNode& reference) noexcept
    {
        const auto* pEntity = reinterpret_cast<const xmlEntity*>(reference.children);
        return pEntity && pEntity->etype == XML_INTERNAL_GENERAL_ENTITY;
    }

    void Expand(std::size_t uAmount)
    {
        m_uExpanded += uAmount;
        if (m_uExpanded > maxExpansion)
            throw CExpansionTooLarge();
    }

    CTree& m_tree;
    std::size_t m_uExpanded = 0;
};

LoadError Failure(std::u16string reason, LONG lLine)
{
    return {E_FAIL, std::move(reason), lLine};
}

LoadError FailureAt(std::u16string_view text, std::size_t index)
{
    const auto lines = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(index), u'\n');
    return Failure(u"The text holds a character that XML does not allow.", static_cast<LONG>(lines) + 1);
}

// Set for the one context, so that whoever else uses the library in this process keeps his own handling. Notes a wrong use of
// namespaces in the context; that a namespace's name is no URI is none.
void NoteError(void* pContext, xmlErrorPtr pError)
{
    const bool bIsAboutName = pError->code == XML_WAR_NS_URI || pError->code == XML_WAR_NS_URI_RELATIVE;
    if (pError->domain == XML_FROM_NAMESPACE && !bIsAboutName)
        *static_cast<bool*>(static_cast<xmlParserCtxt*>(pContext)->_private) = true;
}

std::u16string_view SkipLeading(std::u16string_view text) noexcept
{
    if (text.starts_with(u'\uFEFF'))
        text.remove_prefix(1);
    while (!text.empty() && IsXmlSpace(text.front()))
        text.remove_prefix(1);
    return text;
}
} // namespace

LoadError ReadXml(std::u16string_view text, CTree& tree)
{
    static std::once_flag initialised;
    std::call_once(initialised, xmlInitParser);

    if (const std::size_t illegal = FindIllegal(text); illegal != text.npos)
        return FailureAt(text, illegal);
    const std::u16string_view start = SkipLeading(text);
    const auto skippedLines = std::count(text.begin(), text.end() - static_cast<std::ptrdiff_t>(start.size()), u'\n');
    const std::string bytes = ToUtf8(start);
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return Failure(u"The text is too long.", 0);

    if (!KnowsDeclaredEncoding(start))
        return Failure(u"The text names an encoding that does not exist.", static_cast<LONG>(skippedLines) + 1);
    const ContextPtr context(xmlNewParserCtxt());
    if (!context)
        throw std::bad_alloc();
    bool bMisusesNamespaces = false;
    context->_private = &bMisusesNamespaces;
    context->sax->serror = NoteError;
    context->sax->externalSubset = nullptr;
    context->myDoc =
        xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr, "UTF-8", parseOptions);
    if (context->errNo == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();
    if (!context->myDoc || !context->wellFormed || bMisusesNamespaces)
    {
        const xmlError& error = context->lastError;
        std::u16string reason = error.message ? FromUtf8(error.message) : u"The text is not an XML document.";
        return Failure(std::u16string(TrimXmlSpace(reason)), error.line + static_cast<LONG>(skippedLines));
    }
    try
    {
        CCopy(tree, *context->myDoc);
    }
    catch (const CExpansionTooLarge&)
    {
        return Failure(u"The document's entities stand for too much text.", 0);
    }
    return {};
}
} // namespace platform::msxml3
