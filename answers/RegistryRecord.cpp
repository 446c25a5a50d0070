#include "answers/AnswersKey.h"
#include "answers/Subjects.h"
#include "answers/Wording.h"

#include <set>

namespace answers
{
namespace
{
const WCHAR* const keyPaths[] = {
    nullptr,
    OLESTR(""),
    OLESTR("a"),
    OLESTR("A"),
    OLESTR("a\\b\\c"),
    OLESTR("A\\B\\C"),
    OLESTR("a\\"),
    OLESTR("a\\\\"),
    OLESTR("a\\\\b"),
    OLESTR("a\\b\\"),
    OLESTR("\\a"),
    OLESTR("\\"),
    OLESTR("\\\\"),
    OLESTR("\\\\a"),
    OLESTR("a/b"),
    OLESTR("a\\b/c"),
    OLESTR("."),
    OLESTR(".."),
    OLESTR("a\\..\\a"),
    OLESTR("a\\.\\b"),
    OLESTR(" a"),
    OLESTR("a "),
    OLESTR("a\\ b"),
    OLESTR(" "),
    OLESTR("missing"),
    OLESTR("missing\\b"),
    OLESTR("a\\missing"),
    OLESTR("a\\missing\\c"),
    OLESTR("missing\\"),
    OLESTR("a*"),
    OLESTR("a?"),
    OLESTR("a\x01"),
    OLESTR("\u00C4"),
    OLESTR("\u00E4"),
    OLESTR("\u042F"),
    OLESTR("\u044F"),
    OLESTR("\u4E2D\\\u6587"),
    OLESTR("\u00DF"),
};

void RecordKeyPaths(CRecord& record)
{
    for (const WCHAR* const szPath : keyPaths)
    {
        const CAnswersKey base;
        CUniqueKey key;
        for (const WCHAR* const szPresent : {OLESTR("a\\b\\c"), OLESTR("\u00C4"), OLESTR("\u042F")})
            CreateKey(base.Get(), szPresent, key.Put());
        const std::string path = Quoted(szPath);
        record.Add("open " + path, ShownStatus(RegOpenKeyExW(base.Get(), szPath, 0, KEY_READ, key.Put())));
        DWORD dwDisposition = 77;
        const LSTATUS lStatus = CreateKey(base.Get(), szPath, key.Put(), &dwDisposition);
        record.Add("create " + path, ShownStatus(lStatus) + (lStatus == 0 ? ", " + std::to_string(dwDisposition) : ""));
        record.Add("open " + path + " once created", ShownStatus(RegOpenKeyExW(base.Get(), szPath, 0, KEY_READ, key.Put())));
        key.Reset();
        if (szPath && *szPath)
            record.Add("delete " + path, ShownStatus(RegDeleteKeyW(base.Get(), szPath)));
        record.Add("open a\\b after deleting " + path,
                   ShownStatus(RegOpenKeyExW(base.Get(), OLESTR("a\\b"), 0, KEY_READ, key.Put())));
        record.Add("open missing after deleting " + path,
                   ShownStatus(RegOpenKeyExW(base.Get(), OLESTR("missing"), 0, KEY_READ, key.Put())));
    }
}

void RecordKeyNameLengths(CRecord& record)
{
    for (const std::size_t cchName : {1u, 127u, 254u, 255u, 256u, 257u, 300u, 1000u, 16383u, 16384u})
    {
        const CAnswersKey base;
        CUniqueKey key;
        const CWideString name(cchName, OLESTR('n'));
        const std::string length = std::to_string(cchName);
        record.Add("open a missing name of " + length,
                   ShownStatus(RegOpenKeyExW(base.Get(), name.c_str(), 0, KEY_READ, key.Put())));
        record.Add("create a name of " + length, ShownStatus(CreateKey(base.Get(), name.c_str(), key.Put())));
        record.Add("open a name of " + length, ShownStatus(RegOpenKeyExW(base.Get(), name.c_str(), 0, KEY_READ, key.Put())));
        key.Reset();
        record.Add("delete a name of " + length, ShownStatus(RegDeleteKeyW(base.Get(), name.c_str())));
    }
    for (const unsigned uDepth : {2u, 31u, 32u, 33u, 100u})
    {
        const CAnswersKey base;
        CUniqueKey key;
        CWideString path = OLESTR("d");
        for (unsigned uLevel = 1; uLevel < uDepth; ++uLevel)
            path += OLESTR("\\d");
        const std::string depth = std::to_string(uDepth);
        record.Add("create at once a depth of " + depth, ShownStatus(CreateKey(base.Get(), path.c_str(), key.Put())));
        record.Add("open a depth of " + depth, ShownStatus(RegOpenKeyExW(base.Get(), path.c_str(), 0, KEY_READ, key.Put())));
    }
}

void RecordHandles(CRecord& record)
{
    const CAnswersKey base;
    CUniqueKey closed;
    CreateKey(base.Get(), OLESTR("closed"), closed.Put());
    const HKEY hClosed = closed.Detach();
    RegCloseKey(hClosed);
    const struct
    {
        const char* szName;
        HKEY hKey;
    } handles[] = {
        {"null", nullptr},
        {"closed", hClosed},
        {"of no object", reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x77770))},
        {"of an unknown root", reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000033u))},
    };
    for (const auto& handle : handles)
    {
        const std::string name = std::string(" with a handle that is ") + handle.szName;
        CUniqueKey key;
        WCHAR szName[16];
        DWORD cch = 16;
        record.Add("open" + name, ShownStatus(RegOpenKeyExW(handle.hKey, OLESTR("a"), 0, KEY_READ, key.Put())));
        record.Add("open nothing" + name, ShownStatus(RegOpenKeyExW(handle.hKey, OLESTR(""), 0, KEY_READ, key.Put())));
        record.Add("open null" + name, ShownStatus(RegOpenKeyExW(handle.hKey, nullptr, 0, KEY_READ, key.Put())));
        record.Add("create" + name, ShownStatus(CreateKey(handle.hKey, OLESTR("a"), key.Put())));
        record.Add("create nothing" + name, ShownStatus(CreateKey(handle.hKey, OLESTR(""), key.Put())));
        record.Add("query" + name, ShownStatus(RegQueryValueExW(handle.hKey, OLESTR("v"), nullptr, nullptr, nullptr, nullptr)));
        record.Add("set" + name, ShownStatus(SetBytes(handle.hKey, OLESTR("v"), REG_BINARY, "x")));
        record.Add("delete value" + name, ShownStatus(RegDeleteValueW(handle.hKey, OLESTR("v"))));
        record.Add("enumerate" + name,
                   ShownStatus(RegEnumKeyExW(handle.hKey, 0, szName, &cch, nullptr, nullptr, nullptr, nullptr)));
        record.Add("delete" + name, ShownStatus(RegDeleteKeyW(handle.hKey, OLESTR("a"))));
        record.Add("close" + name, ShownStatus(RegCloseKey(handle.hKey)));
    }
    CUniqueKey key;
    record.Add("open null of a root", ShownStatus(RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, KEY_READ, key.Put())));
    record.Add("open nothing of a root", ShownStatus(RegOpenKeyExW(HKEY_CURRENT_USER, OLESTR(""), 0, KEY_READ, key.Put())));
    record.Add("open into nowhere", ShownStatus(RegOpenKeyExW(HKEY_CURRENT_USER, OLESTR("Software"), 0, KEY_READ, nullptr)));
    record.Add("close a root", ShownStatus(RegCloseKey(HKEY_CURRENT_USER)));
    record.Add("open after a root was closed",
               ShownStatus(RegOpenKeyExW(HKEY_CURRENT_USER, OLESTR("Software"), 0, KEY_READ, key.Put())));
}

void RecordRights(CRecord& record)
{
    static constexpr struct
    {
        const char* szName;
        REGSAM sam;
    } rights[] = {
        {"query", KEY_QUERY_VALUE},
        {"set", KEY_SET_VALUE},
        {"create", KEY_CREATE_SUB_KEY},
        {"enumerate", KEY_ENUMERATE_SUB_KEYS},
        {"read", KEY_READ},
        {"write", KEY_WRITE},
        {"read and write", KEY_READ | KEY_WRITE},
        {"all", KEY_ALL_ACCESS},
    };
    for (const auto& right : rights)
    {
        const CAnswersKey base;
        CUniqueKey below;
        CreateKey(base.Get(), OLESTR("k\\sub"), below.Put());
        CreateKey(base.Get(), OLESTR("k\\other"), below.Put());
        const std::string name = std::string(" with the right ") + right.szName;
        CUniqueKey key;
        record.Add("open" + name, ShownStatus(RegOpenKeyExW(base.Get(), OLESTR("k"), 0, right.sam, key.Put())));
        WCHAR szName[16];
        DWORD cch = 16;
        record.Add("query" + name, ShownStatus(RegQueryValueExW(key.Get(), OLESTR("v"), nullptr, nullptr, nullptr, nullptr)));
        record.Add("set" + name, ShownStatus(SetBytes(key.Get(), OLESTR("v"), REG_BINARY, "x")));
        record.Add("query once set" + name,
                   ShownStatus(RegQueryValueExW(key.Get(), OLESTR("v"), nullptr, nullptr, nullptr, nullptr)));
        record.Add("delete value" + name, ShownStatus(RegDeleteValueW(key.Get(), OLESTR("v"))));
        record.Add("delete missing value" + name, ShownStatus(RegDeleteValueW(key.Get(), OLESTR("none"))));
        record.Add("enumerate" + name,
                   ShownStatus(RegEnumKeyExW(key.Get(), 0, szName, &cch, nullptr, nullptr, nullptr, nullptr)));
        record.Add("open below" + name, ShownStatus(RegOpenKeyExW(key.Get(), OLESTR("sub"), 0, KEY_READ, below.Put())));
        record.Add("open itself" + name, ShownStatus(RegOpenKeyExW(key.Get(), OLESTR(""), 0, KEY_ALL_ACCESS, below.Put())));
        record.Add("create present" + name, ShownStatus(CreateKey(key.Get(), OLESTR("sub"), below.Put())));
        below.Reset();
        record.Add("delete below" + name, ShownStatus(RegDeleteKeyW(key.Get(), OLESTR("other"))));
    }
}

void RecordDeletions(CRecord& record)
{
    enum class Act
    {
        Create,
        Delete,
        Open,
    };
    static constexpr struct
    {
        Act act;
        const WCHAR* szPath;
    } steps[] = {
        {Act::Create, OLESTR("x\\y\\z")}, {Act::Delete, OLESTR("x")},       {Act::Delete, OLESTR("x\\y")},
        {Act::Delete, OLESTR("X\\Y\\Z")}, {Act::Open, OLESTR("x\\y")},      {Act::Open, OLESTR("x\\y\\z")},
        {Act::Delete, OLESTR("x\\y\\z")}, {Act::Delete, OLESTR("x\\y\\")},  {Act::Open, OLESTR("x\\y")},
        {Act::Delete, OLESTR("\\x")},     {Act::Open, OLESTR("x")},         {Act::Delete, OLESTR("x")},
        {Act::Delete, OLESTR("x")},       {Act::Create, OLESTR("x")},       {Act::Create, OLESTR("x")},
        {Act::Delete, OLESTR("x\\none")}, {Act::Delete, OLESTR("none\\x")}, {Act::Delete, OLESTR(".")},
        {Act::Delete, nullptr},           {Act::Open, OLESTR("x")},
    };
    const CAnswersKey base;
    for (const auto& step : steps)
    {
        CUniqueKey key;
        const std::string path = Quoted(step.szPath);
        if (step.act == Act::Create)
        {
            DWORD dwDisposition = 0;
            const LSTATUS lStatus = CreateKey(base.Get(), step.szPath, key.Put(), &dwDisposition);
            record.Add("step: create " + path, ShownStatus(lStatus) + ", " + std::to_string(dwDisposition));
        }
        else if (step.act == Act::Delete)
            record.Add("step: delete " + path, ShownStatus(RegDeleteKeyW(base.Get(), step.szPath)));
        else
            record.Add("step: open " + path, ShownStatus(RegOpenKeyExW(base.Get(), step.szPath, 0, KEY_READ, key.Put())));
    }
}

void RecordDeletedKey(CRecord& record)
{
    const CAnswersKey base;
    for (const bool bCreatedAgain : {false, true})
    {
        CUniqueKey key;
        CUniqueKey other;
        CreateKey(base.Get(), OLESTR("gone"), key.Put());
        SetBytes(key.Get(), OLESTR("v"), REG_BINARY, "x");
        RegDeleteKeyW(base.Get(), OLESTR("gone"));
        if (bCreatedAgain)
            CreateKey(base.Get(), OLESTR("gone"), other.Put());
        const std::string what = bCreatedAgain ? " with a deleted key that there is again" : " with a deleted key";
        WCHAR szName[16];
        DWORD cch = 16;
        record.Add("query" + what, ShownStatus(RegQueryValueExW(key.Get(), OLESTR("v"), nullptr, nullptr, nullptr, nullptr)));
        record.Add("set" + what, ShownStatus(SetBytes(key.Get(), OLESTR("v"), REG_BINARY, "x")));
        record.Add("delete value" + what, ShownStatus(RegDeleteValueW(key.Get(), OLESTR("v"))));
        record.Add("enumerate" + what,
                   ShownStatus(RegEnumKeyExW(key.Get(), 0, szName, &cch, nullptr, nullptr, nullptr, nullptr)));
        record.Add("open itself" + what, ShownStatus(RegOpenKeyExW(key.Get(), OLESTR(""), 0, KEY_READ, other.Put())));
        record.Add("open below" + what, ShownStatus(RegOpenKeyExW(key.Get(), OLESTR("sub"), 0, KEY_READ, other.Put())));
        record.Add("create below" + what, ShownStatus(CreateKey(key.Get(), OLESTR("sub"), other.Put())));
        record.Add("create itself" + what, ShownStatus(CreateKey(key.Get(), OLESTR(""), other.Put())));
        record.Add("delete below" + what, ShownStatus(RegDeleteKeyW(key.Get(), OLESTR("sub"))));
        record.Add("close" + what, ShownStatus(RegCloseKey(key.Detach())));
    }
}

// In which order keys are listed is each platform's own matter.
void RecordEnumeration(CRecord& record)
{
    const CAnswersKey base;
    for (const WCHAR* const szName : {OLESTR("b"), OLESTR("A"), OLESTR("a b"), OLESTR("_"), OLESTR("10"), OLESTR("\u00C4")})
    {
        CUniqueKey key;
        CreateKey(base.Get(), szName, key.Put());
    }
    std::set<CWideString> names;
    for (DWORD dwIndex = 0; dwIndex < 8; ++dwIndex)
    {
        WCHAR szName[16] = {};
        DWORD cch = 16;
        const LSTATUS lStatus = RegEnumKeyExW(base.Get(), dwIndex, szName, &cch, nullptr, nullptr, nullptr, nullptr);
        record.Add("enumerate at " + std::to_string(dwIndex), ShownStatus(lStatus));
        if (lStatus == 0 && CWideView(szName).size() == cch)
            names.insert(szName);
    }
    std::string all;
    for (const auto& name : names)
        all += Quoted(name.c_str()) + ' ';
    record.Add("names that were enumerated", all);
    const CAnswersKey other;
    CUniqueKey key;
    CreateKey(other.Get(), OLESTR("abc"), key.Put());
    for (DWORD cchRoom = 0; cchRoom < 6; ++cchRoom)
    {
        WCHAR szName[16] = {};
        DWORD cch = cchRoom;
        const LSTATUS lStatus = RegEnumKeyExW(other.Get(), 0, szName, &cch, nullptr, nullptr, nullptr, nullptr);
        record.Add("enumerate with room for " + std::to_string(cchRoom),
                   ShownStatus(lStatus) + (lStatus == 0 ? ", " + Quoted(szName) + " of " + std::to_string(cch) : ""));
    }
}
} // namespace

void RecordRegistry(CRecord& record, const std::filesystem::path&)
{
    RecordKeyPaths(record);
    RecordKeyNameLengths(record);
    RecordHandles(record);
    RecordRights(record);
    RecordRegistryValues(record);
    RecordDeletions(record);
    RecordDeletedKey(record);
    RecordEnumeration(record);
}
} // namespace answers
