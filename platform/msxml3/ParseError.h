// Why a text did not load.
#pragma once

#include "DispatchObject.h"
#include "Tree.h"

namespace platform::msxml3
{
// Keeps what the last load said; a later load does not change it.
class CParseError final : public CDispatchObject<IXMLDOMParseError, IID_IXMLDOMParseError>
{
public:
    explicit CParseError(const LoadError& error);

    STDMETHODIMP get_errorCode(LONG* plCode) override;
    STDMETHODIMP get_reason(BSTR* pbstrReason) override;
    STDMETHODIMP get_line(LONG* plLine) override;

private:
    LoadError m_error;
};
} // namespace platform::msxml3
