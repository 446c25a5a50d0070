#include "ParseError.h"

#include "Edge.h"

namespace platform::msxml3
{
CParseError::CParseError(const LoadError& error) : m_error(error)
{
}

STDMETHODIMP CParseError::get_errorCode(LONG* plCode)
{
    return Answer("get_errorCode", plCode,
                  [&]
                  {
                      *plCode = m_error.code;
                      return m_error.code == S_OK ? S_FALSE : S_OK;
                  });
}

STDMETHODIMP CParseError::get_reason(BSTR* pbstrReason)
{
    return Answer("get_reason", pbstrReason,
                  [&] { return m_error.code == S_OK ? S_FALSE : GiveText(m_error.reason, pbstrReason); });
}

STDMETHODIMP CParseError::get_line(LONG* plLine)
{
    return Answer("get_line", plLine,
                  [&]
                  {
                      *plLine = m_error.lLine;
                      return m_error.code == S_OK ? S_FALSE : S_OK;
                  });
}
} // namespace platform::msxml3
