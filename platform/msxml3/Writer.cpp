#include "Writer.h"

#include "XmlText.h"

namespace platform::msxml3
{
namespace
{
struct Binding
{
    std::u16string_view prefix;
    std::u16string_view uri;
};

class CWriter
{
public:
    std::u16string Write(const Node& top)
    {
        // A loop instead of recursion: edits may nest deeper than any text that loads.
        const Node* pNode = &top;
        while (pNode)
        {
            const bool bDescend = Open(*pNode);
            if (bDescend && pNode->pFirst)
            {
                pNode = pNode->pFirst;
                continue;
            }
            if (bDescend)
                Close(*pNode);
            EndLine(*pNode, top);
            while (pNode != &top && !pNode->pNext)
            {
                pNode = pNode->pParent;
                Close(*pNode);
                EndLine(*pNode, top);
            }
            pNode = pNode == &top ? nullptr : pNode->pNext;
        }
        return std::move(m_text);
    }

private:
    // True when the node has an end that Close must write.
    bool Open(const Node& node)
    {
        switch (node.type)
        {
        case NODE_DOCUMENT:
            return true;
        case NODE_ELEMENT:
            return OpenElement(node);
        case NODE_TEXT:
            AppendEscaped(node.value, false);
            return false;
        case NODE_ATTRIBUTE:
            AppendAttribute(node.name, node.value);
            return false;
        case NODE_CDATA_SECTION:
            AppendParts({u"<![CDATA[", node.value, u"]]>"});
            return false;
        case NODE_COMMENT:
            AppendParts({u"<!--", node.value, u"-->"});
            return false;
        case NODE_PROCESSING_INSTRUCTION:
            AppendParts({u"<?", node.name, node.value.empty() ? u"" : u" ", node.value, u"?>"});
            return false;
        case NODE_ENTITY_REFERENCE:
            AppendParts({u"&", node.name, u";"});
            return false;
        case NODE_DOCUMENT_TYPE:
            AppendParts({node.value});
            return false;
        default:
            return false;
        }
    }

    bool OpenElement(const Node& node)
    {
        m_marks.push_back(m_bindings.size());
        for (const Node* pAttribute : node.attributes)
            if (pAttribute->bDeclaresNamespace)
                m_bindings.push_back({DeclaredPrefix(pAttribute->name), pAttribute->value});

        m_text += u'<';
        m_text += node.name;
        DeclareIfMissing(node, PrefixOf(node.name), node.namespaceUri);
        for (const Node* pAttribute : node.attributes)
        {
            m_text += u' ';
            AppendAttribute(pAttribute->name, pAttribute->value);
            if (!pAttribute->namespaceUri.empty())
                DeclareIfMissing(node, PrefixOf(pAttribute->name), pAttribute->namespaceUri);
        }
        m_text += node.pFirst ? u">" : u"/>";
        return true;
    }

    void Close(const Node& node)
    {
        if (node.type != NODE_ELEMENT)
            return;
        if (node.pFirst)
            AppendParts({u"</", node.name, u">"});
        m_bindings.resize(m_marks.back());
        m_marks.pop_back();
    }

    void EndLine(const Node& node, const Node& top)
    {
        if (&node != &top && node.pParent && node.pParent->type == NODE_DOCUMENT)
            m_text += u"\r\n";
    }

    static std::u16string_view DeclaredPrefix(std::u16string_view attribute)
    {
        return PrefixOf(attribute).empty() ? std::u16string_view() : BaseOf(attribute);
    }

    void DeclareIfMissing(const Node& element, std::u16string_view prefix, std::u16string_view uri)
    {
        if (prefix == u"xml" || Bound(prefix) == uri)
            return;
        std::u16string declaration = u"xmlns";
        if (!prefix.empty())
            declaration.append(u":").append(prefix);
        if (FindAttribute(element, declaration))
            return; // set as a mere attribute, which is written as such
        m_text += u' ';
        AppendAttribute(declaration, uri);
        m_bindings.push_back({prefix, uri});
    }

    std::u16string_view Bound(std::u16string_view prefix) const
    {
        for (auto binding = m_bindings.rbegin(); binding != m_bindings.rend(); ++binding)
            if (binding->prefix == prefix)
                return binding->uri;
        return {};
    }

    void AppendAttribute(std::u16string_view name, std::u16string_view value)
    {
        AppendParts({name, u"=\""});
        AppendEscaped(value, true);
        m_text += u'"';
    }

    // For what stands as it is between marks that it cannot contain.
    void AppendParts(std::initializer_list<std::u16string_view> parts)
    {
        for (const std::u16string_view part : parts)
            for (const char16_t ch : part)
            {
                if (ch == u'\n')
                    m_text += u'\r';
                m_text += ch;
            }
    }

    void AppendEscaped(std::u16string_view text, bool bInAttribute)
    {
        for (const char16_t ch : text)
        {
            switch (ch)
            {
            case u'&':
                m_text += u"&amp;";
                break;
            case u'<':
                m_text += u"&lt;";
                break;
            case u'>':
                m_text += u"&gt;";
                break;
            case u'"':
                m_text += bInAttribute ? u"&quot;" : u"\"";
                break;
            case u'\r': // reading would turn it into a line feed
                m_text += u"&#13;";
                break;
            case u'\n': // and in an attribute these two into blanks
                m_text += bInAttribute ? u"&#10;" : u"\r\n";
                break;
            case u'\t':
                m_text += bInAttribute ? u"&#9;" : u"\t";
                break;
            default:
                m_text += ch;
            }
        }
    }

    std::u16string m_text;
    std::vector<Binding> m_bindings;
    std::vector<std::size_t> m_marks; // how many bindings were in force outside each open element
};
} // namespace

std::u16string WriteXml(const Node& node)
{
    return CWriter().Write(node);
}
} // namespace platform::msxml3
