// The road to an adapter's driver.
#include "simulator/Adapters.h"
#include "simulator/Calls.h"
#include "simulator/Clients.h"
#include "simulator/ServiceFolder.h"

#include <windows.h>

#include <wlanapi.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

using namespace simulator;

namespace
{
// A request and a reply begin with the same header; the words in use are little-endian at these places.
constexpr std::size_t cbHeader = 24;
constexpr std::size_t objectIdentifierAt = 4;
constexpr std::size_t payloadLengthAt = 12;
constexpr std::size_t cbLoggedInput = 32;

DWORD WordAt(std::string_view bytes, std::size_t at)
{
    DWORD dwValue = 0;
    for (std::size_t i = 0; i < 4; ++i)
        dwValue |= static_cast<DWORD>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return dwValue;
}

std::string Word(DWORD dwValue)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(dwValue >> shift)));
    return bytes;
}

std::string VendorReply(const Adapter& adapter, std::string_view header)
{
    if (adapter.vendorReply)
        return *adapter.vendorReply;
    Require(adapter.vendor.has_value(), ERROR_NOT_SUPPORTED);
    return std::string(header) + *adapter.vendor + '\0';
}

std::string RapidoReply(const Adapter& adapter, std::string_view header)
{
    if (adapter.rapidoReply)
        return *adapter.rapidoReply;
    Require(adapter.rapido.has_value(), ERROR_NOT_SUPPORTED);
    return std::string(header) + Word(*adapter.rapido);
}

struct Query
{
    DWORD dwObjectIdentifier;
    std::string (*reply)(const Adapter& adapter, std::string_view header);
};
constexpr Query queries[] = {
    {0x0001010D, VendorReply}, // the vendor description that every network driver knows
    {0xFF000040, RapidoReply},
};

std::string DriverReply(const Adapter& adapter, std::string_view request, DWORD cbOutBuffer)
{
    Require(!adapter.driverError || adapter.vendorReply || adapter.rapidoReply, adapter.driverError.value_or(ERROR_SUCCESS));
    Require(cbOutBuffer >= cbHeader, ERROR_INSUFFICIENT_BUFFER);
    const DWORD dwObjectIdentifier = WordAt(request, objectIdentifierAt);
    for (const Query& query : queries)
    {
        if (query.dwObjectIdentifier == dwObjectIdentifier)
            return query.reply(adapter, request.substr(0, cbHeader));
    }
    throw CServiceError(ERROR_NOT_SUPPORTED);
}
} // namespace

DWORD WINAPI WlanIhvControl(HANDLE hClientHandle, const GUID* pInterfaceGuid, WLAN_IHV_CONTROL_TYPE type, DWORD cbInBuffer,
                            PVOID pInBuffer, DWORD cbOutBuffer, PVOID pOutBuffer, PDWORD pcbReturned)
{
    return ServiceCall(
        "WlanIhvControl",
        [&](CCallLine& line)
        {
            line.Handle(hClientHandle).Interface(pInterfaceGuid).Number("type", static_cast<DWORD>(type));
            line.Number("in", cbInBuffer).Bytes("input", pInBuffer, std::min<std::size_t>(cbInBuffer, cbLoggedInput));
            line.Number("out", cbOutBuffer);
        },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(pInterfaceGuid && pInBuffer && pOutBuffer && pcbReturned);
            // A service extension of the vendor's, the other receiver of such requests, does not run here.
            Require(type == wlan_ihv_control_type_driver, ERROR_NOT_SUPPORTED);
            const std::string_view request(static_cast<const char*>(pInBuffer), cbInBuffer);
            Require(request.size() >= cbHeader);
            Require(WordAt(request, payloadLengthAt) <= request.size() - cbHeader);
            const Adapter adapter = FindAdapter(ServiceFolder(), *pInterfaceGuid);

            *pcbReturned = 0; // the driver has the request now, and its refusals say that nothing came back
            const std::string reply = DriverReply(adapter, request, cbOutBuffer);
            const std::size_t cbReply = std::min<std::size_t>(reply.size(), cbOutBuffer);
            std::memcpy(pOutBuffer, reply.data(), cbReply);
            *pcbReturned = static_cast<DWORD>(cbReply);
            line.Number("returned", *pcbReturned);
            Require(!adapter.driverError, adapter.driverError.value_or(ERROR_SUCCESS)); // after an answer given all the same
        });
}
