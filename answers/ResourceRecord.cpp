#include "answers/Subjects.h"
#include "answers/Wording.h"

#include "host/Library.h"
#include "tests/support/TestFolder.h"

#include <vector>

namespace answers
{
namespace
{
constexpr UINT uFirstId = 96;
constexpr UINT uLastId = 128;
constexpr WCHAR filler = OLESTR('#');

class CLoadedFile
{
public:
    CLoadedFile(const WCHAR* szFile, DWORD dwFlags) : m_hModule(LoadLibraryExW(szFile, nullptr, dwFlags))
    {
    }
    ~CLoadedFile()
    {
        if (m_hModule)
            FreeLibrary(m_hModule);
    }
    CLoadedFile(const CLoadedFile&) = delete;
    CLoadedFile& operator=(const CLoadedFile&) = delete;

    HMODULE Get() const
    {
        return m_hModule;
    }

private:
    const HMODULE m_hModule;
};

// The string, and the buffer up to what was not touched.
std::string ShownString(HMODULE hModule, UINT uId, int cchRoom)
{
    std::vector<WCHAR> buffer(300, filler);
    const int cch = LoadStringW(hModule, uId, buffer.data(), cchRoom);
    std::size_t cchTouched = buffer.size();
    while (cchTouched > 0 && buffer[cchTouched - 1] == filler)
        --cchTouched;
    return std::to_string(cch) + ", " + Shown(CWideView(buffer.data(), cchTouched));
}

// With no room the buffer is told where the string lies.
std::string ShownStringInPlace(HMODULE hModule, UINT uId)
{
    const WCHAR* pText = nullptr;
    const int cch = LoadStringW(hModule, uId, reinterpret_cast<LPWSTR>(&pText), 0);
    return std::to_string(cch) + (cch > 0 && pText ? ", " + Shown(CWideView(pText, static_cast<std::size_t>(cch))) : "");
}

struct Resource
{
    const WCHAR* szType;
    const WCHAR* szName;
};

std::string ShownId(const WCHAR* szId)
{
    return IS_INTRESOURCE(szId) ? std::to_string(LOWORD(reinterpret_cast<ULONG_PTR>(szId))) : Quoted(szId);
}

// The size and a sum of the bytes, which are the same when all of them are.
std::string ShownResource(HMODULE hModule, const Resource& resource)
{
    SetLastError(4711);
    const HRSRC hResource = FindResourceW(hModule, resource.szName, resource.szType);
    if (!hResource)
        return ShownSuccess(false);
    const DWORD cb = SizeofResource(hModule, hResource);
    const auto* const pBytes = static_cast<const BYTE*>(LockResource(LoadResource(hModule, hResource)));
    std::uint32_t uSum = 0;
    for (DWORD i = 0; pBytes && i < cb; ++i)
        uSum = uSum * 31 + pBytes[i];
    return std::to_string(cb) + " bytes, sum " + ShownHex(uSum);
}

void RecordContents(CRecord& record, const std::string& name, HMODULE hModule)
{
    for (UINT uId = uFirstId; uId <= uLastId; ++uId)
        record.Add(name + " string " + std::to_string(uId), ShownString(hModule, uId, 200));
    for (const UINT uId : {0u, 1u, 15u, 16u, 1000u, 65535u, 65536u, 65536u + 102u, 0xFFFFFFFFu})
        record.Add(name + " string " + std::to_string(uId), ShownString(hModule, uId, 200));
    for (const UINT uId : {102u, 103u, 110u, 122u, 108u})
    {
        for (const int cchRoom : {1, 2, 3, 5, 6, 7, 8, 9, 10, 14, 15, 16, 20, 21, 22, 30})
            record.Add(name + " string " + std::to_string(uId) + " with room for " + std::to_string(cchRoom),
                       ShownString(hModule, uId, cchRoom));
        record.Add(name + " string " + std::to_string(uId) + " in place", ShownStringInPlace(hModule, uId));
    }
    record.Add(name + " string into nowhere", std::to_string(LoadStringW(hModule, 102, nullptr, 10)));
    const Resource resources[] = {
        {RT_STRING, MAKEINTRESOURCEW(7)},
        {RT_STRING, MAKEINTRESOURCEW(8)},
        {RT_STRING, MAKEINTRESOURCEW(6)},
        {RT_STRING, MAKEINTRESOURCEW(9)},
        {RT_STRING, MAKEINTRESOURCEW(0)},
        {RT_STRING, OLESTR("#7")},
        {RT_STRING, OLESTR("#07")},
        {RT_STRING, OLESTR("7")},
        {RT_STRING, OLESTR("none")},
        {RT_DIALOG, MAKEINTRESOURCEW(101)},
        {RT_DIALOG, MAKEINTRESOURCEW(102)},
        {RT_DIALOG, OLESTR("#101")},
        {OLESTR("#5"), OLESTR("#101")},
        {OLESTR("#6"), MAKEINTRESOURCEW(7)},
        {OLESTR("DIALOG"), OLESTR("#101")},
        {RT_RCDATA, MAKEINTRESOURCEW(1)},
        {MAKEINTRESOURCEW(16), MAKEINTRESOURCEW(1)},
        {MAKEINTRESOURCEW(77), MAKEINTRESOURCEW(1)},
    };
    for (const auto& resource : resources)
        record.Add(name + " resource " + ShownId(resource.szName) + " of type " + ShownId(resource.szType),
                   ShownResource(hModule, resource));
}

struct FileCase
{
    const char* szName;
    const WCHAR* szFile; // beside the program
};
constexpr FileCase moduleFiles[] = {
    {"module", OLESTR("korihvui.dll")},
    {"english file", OLESTR("en-US\\korihvui.dll.mui")},
    {"german file", OLESTR("de-DE\\korihvui.dll.mui")},
};
// Below the folder.
constexpr FileCase wrongFiles[] = {
    {"missing file", OLESTR("none.dll")},
    {"missing file without extension", OLESTR("none")},
    {"missing language file", OLESTR("none.dll.mui")},
    {"file in a missing folder", OLESTR("none\\none.dll")},
    {"text", OLESTR("text.txt")},
    {"text that is called a module", OLESTR("text.dll")},
    {"text that is called a module, without extension", OLESTR("text")},
    {"short text", OLESTR("short.dll")},
    {"empty file", OLESTR("empty.dll")},
    {"folder", OLESTR("folder.dll")},
    {"name that cannot be", OLESTR("a*b.dll")},
};

void RecordWrongFiles(CRecord& record, const std::filesystem::path& folder)
{
    const std::string text(5000, 'x');
    tests::WriteBytes(folder / "text.txt", text);
    tests::WriteBytes(folder / "text.dll", text);
    tests::WriteBytes(folder / "short.dll", "x");
    tests::WriteBytes(folder / "empty.dll", "");
    std::filesystem::create_directory(folder / "folder.dll");
    const CWideString folderName = FolderName(folder);
    for (const DWORD dwFlags : {DWORD{0}, DWORD{LOAD_LIBRARY_AS_DATAFILE}})
    {
        const std::string how = dwFlags == 0 ? "load " : "load as data ";
        for (const auto& file : wrongFiles)
        {
            SetLastError(4711);
            const CLoadedFile loaded((folderName + OLESTR("\\") + file.szFile).c_str(), dwFlags);
            record.Add(how + file.szName, ShownSuccess(loaded.Get() != nullptr));
        }
        for (const WCHAR* const szName :
             {OLESTR(""), OLESTR("no-such-module"), OLESTR("no-such-module.dll"), OLESTR("no-such-module.")})
        {
            SetLastError(4711);
            const CLoadedFile loaded(szName, dwFlags);
            record.Add(how + Quoted(szName), ShownSuccess(loaded.Get() != nullptr));
        }
    }
}

void RecordModules(CRecord& record)
{
    const CWideString folder = BesideProgram({});
    for (const DWORD dwFlags : {DWORD{LOAD_LIBRARY_AS_DATAFILE}, DWORD{0}})
    {
        for (const auto& file : moduleFiles)
        {
            const std::string name = std::string(file.szName) + (dwFlags == 0 ? "" : " as data");
            SetLastError(4711);
            const CLoadedFile loaded((folder + file.szFile).c_str(), dwFlags);
            record.Add("load " + name, ShownSuccess(loaded.Get() != nullptr));
            if (loaded.Get())
                RecordContents(record, name, loaded.Get());
        }
    }
    static constexpr const WCHAR* otherNames[] = {OLESTR("korihvui"), OLESTR("KORIHVUI.DLL"), OLESTR(".\\korihvui.dll"),
                                                  OLESTR("en-US\\..\\korihvui.dll"), OLESTR("korihvui.")};
    for (const WCHAR* const szName : otherNames)
    {
        SetLastError(4711);
        const CLoadedFile loaded((folder + szName).c_str(), 0);
        record.Add("load the module as " + Quoted(szName), ShownSuccess(loaded.Get() != nullptr));
    }
}

void RecordHandles(CRecord& record)
{
    const CWideString file = BesideProgram(OLESTR("korihvui.dll"));
    SetLastError(4711);
    record.Add("handle of a module that is not loaded", ShownSuccess(GetModuleHandleW(OLESTR("korihvui.dll")) != nullptr));
    const HMODULE hModule = LoadLibraryW(file.c_str());
    const HMODULE hAgain = LoadLibraryExW(file.c_str(), nullptr, 0);
    record.Add("loaded twice", hModule == hAgain ? "the same" : "another");
    for (const WCHAR* const szName :
         {OLESTR("korihvui.dll"), OLESTR("korihvui"), OLESTR("KORIHVUI"), OLESTR("korihvui."), file.c_str()})
        record.Add("handle by name " + ShownPlace(szName, BesideProgram({})),
                   GetModuleHandleW(szName) == hModule ? "the same" : "another");
    WCHAR szName[MAX_PATH] = {};
    GetModuleFileNameW(hModule, szName, MAX_PATH);
    record.Add("file of the module", ShownPlace(szName, BesideProgram({})));
    record.Add("no thread calls", ShownSuccess(DisableThreadLibraryCalls(hModule) != FALSE));
    record.Add("export", GetProcAddress(hModule, "DllGetClassObject") ? "there" : "missing");
    SetLastError(4711);
    record.Add("missing export", ShownSuccess(GetProcAddress(hModule, "NoSuchExport") != nullptr));
    record.Add("free", ShownSuccess(FreeLibrary(hModule) != FALSE));
    record.Add("free again", ShownSuccess(FreeLibrary(hModule) != FALSE));
    SetLastError(4711);
    record.Add("free once too often", ShownSuccess(FreeLibrary(hModule) != FALSE));
    SetLastError(4711);
    record.Add("free null", ShownSuccess(FreeLibrary(nullptr) != FALSE));
    SetLastError(4711);
    record.Add("file of a module that is gone", ShownSuccess(GetModuleFileNameW(hModule, szName, MAX_PATH) != 0));
    SetLastError(4711);
    record.Add("no thread calls of a module that is gone", ShownSuccess(DisableThreadLibraryCalls(hModule) != FALSE));
    record.Add("string of the program", std::to_string(LoadStringW(nullptr, 102, szName, MAX_PATH)));
}
} // namespace

void RecordResources(CRecord& record, const std::filesystem::path& folder)
{
    RecordModules(record);
    RecordWrongFiles(record, folder);
    RecordHandles(record);
}
} // namespace answers
