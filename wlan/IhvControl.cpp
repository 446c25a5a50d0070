#include "wlan/IhvControl.h"

#include "wlan/WlanClient.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace
{
constexpr std::string_view makersName = "Korvane";

// The request as the driver reads it: 32 bytes.
struct IhvRequest
{
    DWORD dwReserved1 = 0;
    DWORD dwObjectIdentifier;
    DWORD dwReserved2 = 0;
    DWORD cbPayload;
    BYTE rgbReserved3[8] = {};
    BYTE rgbPayload[8] = {};
};
static_assert(sizeof(IhvRequest) == 32 && offsetof(IhvRequest, cbPayload) == 12 && offsetof(IhvRequest, rgbPayload) == 24);

// The driver's answer begins behind the header, and only counts when something stands there.
constexpr std::size_t cbReplyHeader = offsetof(IhvRequest, rgbPayload);

constexpr IhvRequest vendorDescriptionRequest = {.dwObjectIdentifier = 0x0001010D, .cbPayload = 0};
constexpr IhvRequest rapidoRequest = {.dwObjectIdentifier = 0xFF000040, .cbPayload = 8};
constexpr std::size_t cbVendorDescriptionReply = 128;
constexpr std::size_t cbRapidoReply = 32;

template <std::size_t cbReply>
struct CReply
{
    std::array<char, cbReply> bytes{};
    DWORD cbReturned{};

    // What stands behind the header, within what came back.
    std::string_view Answer() const
    {
        std::string_view answer(bytes.data(), std::min<std::size_t>(cbReturned, cbReply));
        answer.remove_prefix(std::min(answer.size(), cbReplyHeader));
        return answer;
    }
};

template <std::size_t cbReply>
CReply<cbReply> AskDriver(IhvRequest request)
{
    CReply<cbReply> reply;
    CWlanClient client;
    client.IhvControl(true, sizeof(request), &request, static_cast<DWORD>(cbReply), reply.bytes.data(), &reply.cbReturned);
    return reply;
}
} // namespace

LONG IsKorvaneInterface()
{
    const auto reply = AskDriver<cbVendorDescriptionReply>(vendorDescriptionRequest);
    const std::string_view description = reply.Answer().substr(0, reply.Answer().find('\0'));
    return description.find(makersName) == std::string_view::npos ? 0 : 1;
}

DWORD QueryRapidoCapability()
{
    const auto reply = AskDriver<cbRapidoReply>(rapidoRequest);
    if (reply.Answer().empty())
        return 0;
    // The whole number even when the driver counted less than its four bytes: the buffer was zero before.
    DWORD dwCapability{};
    std::memcpy(&dwCapability, reply.Answer().data(), sizeof(dwCapability));
    return dwCapability;
}
