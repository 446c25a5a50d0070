// The XML document component: the interfaces and operations of it that are in use here. The places of the operations are not
// the platform's, where a document is a node, too, and both come from automation: natively all sides compile against this file.
#pragma once

#include "oleauto.h"

enum DOMNodeType
{
    NODE_INVALID = 0,
    NODE_ELEMENT = 1,
    NODE_TEXT = 3,
    NODE_CDATA_SECTION = 4,
    NODE_COMMENT = 8,
};

class IXMLDOMNode : public IUnknown
{
public:
    virtual HRESULT STDMETHODCALLTYPE get_nodeName(BSTR* pbstrName) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeValue(VARIANT* pvarValue) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nodeType(DOMNodeType* pType) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_firstChild(IXMLDOMNode** ppChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_nextSibling(IXMLDOMNode** ppSibling) = 0;
    virtual HRESULT STDMETHODCALLTYPE insertBefore(IXMLDOMNode* pNewChild, VARIANT varRefChild, IXMLDOMNode** ppNewChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE removeChild(IXMLDOMNode* pChild, IXMLDOMNode** ppOldChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE appendChild(IXMLDOMNode* pNewChild, IXMLDOMNode** ppNewChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE hasChildNodes(VARIANT_BOOL* pbHasChild) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_text(BSTR* pbstrText) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_text(BSTR bstrText) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_xml(BSTR* pbstrXml) = 0;
    virtual HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR bstrQuery, IXMLDOMNode** ppNode) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_baseName(BSTR* pbstrName) = 0;

protected:
    ~IXMLDOMNode() = default;
};

class IXMLDOMElement : public IXMLDOMNode
{
public:
    virtual HRESULT STDMETHODCALLTYPE setAttribute(BSTR bstrName, VARIANT varValue) = 0;

protected:
    ~IXMLDOMElement() = default;
};

class IXMLDOMParseError : public IUnknown
{
public:
    virtual HRESULT STDMETHODCALLTYPE get_reason(BSTR* pbstrReason) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_line(LONG* plLine) = 0;

protected:
    ~IXMLDOMParseError() = default;
};

class IXMLDOMDocument : public IUnknown
{
public:
    virtual HRESULT STDMETHODCALLTYPE get_xml(BSTR* pbstrXml) = 0;
    virtual HRESULT STDMETHODCALLTYPE selectSingleNode(BSTR bstrQuery, IXMLDOMNode** ppNode) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_documentElement(IXMLDOMElement** ppElement) = 0;
    virtual HRESULT STDMETHODCALLTYPE createElement(BSTR bstrTagName, IXMLDOMElement** ppElement) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_parseError(IXMLDOMParseError** ppError) = 0;
    virtual HRESULT STDMETHODCALLTYPE loadXML(BSTR bstrXml, VARIANT_BOOL* pbSuccessful) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_async(VARIANT_BOOL bAsync) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_validateOnParse(VARIANT_BOOL bValidate) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_resolveExternals(VARIANT_BOOL bResolve) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_preserveWhiteSpace(VARIANT_BOOL bPreserve) = 0;

protected:
    ~IXMLDOMDocument() = default;
};

extern "C"
{
    extern const IID IID_IXMLDOMNode;
    extern const IID IID_IXMLDOMElement;
    extern const IID IID_IXMLDOMParseError;
    extern const IID IID_IXMLDOMDocument;
}
