// A thin layer over the platform's XML document: short verbs on light handles.
//
// An empty node is one that was not found or could not be made, and every verb is safe on it, so that reading code needs
// no ladder of checks. A document is made, used and released within one operation, on one thread; nodes may outlive it.
#pragma once

#include "values/Bstr.h"
#include "values/ComRef.h"
#include "values/WideText.h"

#include <msxml2.h>

#include <optional>

class CXmlNode
{
public:
    CXmlNode() = default;
    explicit CXmlNode(CComRef<IXMLDOMNode> node) : m_node(std::move(node))
    {
    }

    explicit operator bool() const
    {
        return static_cast<bool>(m_node);
    }
    IXMLDOMNode* Get() const
    {
        return m_node.Get();
    }

    // The first match in document order of an absolute path or of a child's name; empty when there is none.
    CXmlNode Select(const WCHAR* szPath) const;

    // Whether there are children, white space that only separates them left aside; nothing when the question fails.
    std::optional<bool> HasChildren() const;

    // The texts of all descendants run together; nothing when they cannot be read.
    std::optional<CWideString> Text() const;

    // The same without the white space that only separates elements: for elements that hold others.
    std::optional<CWideString> TextOfElements() const;

    // Replaces the content. A failure is left unnoticed, as every caller wants it.
    void SetText(const WCHAR* szText) const;

    // Takes a child out. A failure is left unnoticed, as the caller wants it.
    void Remove(const CXmlNode& child) const;

    // Puts a new node last, or before one of the children. The result is the node as inserted, empty on failure.
    CXmlNode Append(const CXmlNode& child) const;
    CXmlNode InsertBefore(const CXmlNode& child, const CXmlNode& reference) const;

    // Sets an attribute of an element. A failure is left unnoticed, as every caller wants it.
    void SetAttribute(const WCHAR* szName, const WCHAR* szValue) const;

    // The text form of the element with everything below it; null on failure.
    CBstr Xml() const;

private:
    CComRef<IXMLDOMNode> m_node;
};

class CXmlDocument
{
public:
    // Makes a document; an empty one (false) when the component cannot be created.
    CXmlDocument();

    explicit operator bool() const
    {
        return static_cast<bool>(m_document);
    }

    // Loads a whole text. Texts with a document type declaration are refused: no profile has
    // one, and it is where entities that grow without bound and references to other files come from.
    bool Load(const WCHAR* szText);

    CXmlNode Root() const;

    // A new element without namespace, not yet part of the tree; empty on failure.
    CXmlNode CreateElement(const WCHAR* szName) const;

    // Creates an element and appends it below the parent; empty when either fails or the parent is empty.
    CXmlNode AppendElement(const CXmlNode& parent, const WCHAR* szName) const;

    // The text form of the whole document; null on failure.
    CBstr Xml() const;

private:
    CComRef<IXMLDOMDocument> m_document;
};
