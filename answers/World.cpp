#include "answers/World.h"

#include "answers/Shown.h"
#include "host/Library.h"

namespace answers
{
namespace
{
constexpr WCHAR szKey[] = OLESTR("Software\\PlatformAnswers");

LSTATUS Create(HKEY hParent, const WCHAR* szPath, CUniqueKey& key)
{
    return RegCreateKeyExW(hParent, szPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
}

std::set<std::string> Listed(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    {
        const auto name = entry.path().lexically_relative(folder).generic_u16string();
        names.insert((name.size() > 100 ? "the path" : Shown(CWideString(name.begin(), name.end()))) +
                     (entry.is_directory() ? "/" : "=" + std::to_string(entry.file_size())));
    }
    return names;
}
} // namespace

CWorld::CWorld()
{
    for (const char* const szName : {"folder", "full"})
        std::filesystem::create_directories(m_folder.Path() / szName);
    for (const char* const szName : {"file", "other", "full/inner"})
        tests::WriteBytes(m_folder.Path() / szName, "0123456789");
    tests::WriteBytes(m_folder.Path() / "text.dll", std::string(5000, 'x'));
    tests::WriteBytes(m_folder.Path() / "empty.dll", "");
    m_names = Listed(m_folder.Path());
    GetCurrentDirectoryW(MAX_PATH, m_szBefore);
    SetCurrentDirectoryW(m_folder.PlatformName().c_str());
    GetCurrentDirectoryW(MAX_PATH, m_szFolder);
}

CWorld::~CWorld()
{
    SetCurrentDirectoryW(m_szBefore);
    if (!m_key)
        return;
    openedKey.Reset();
    // What lies below first.
    for (auto path = m_keyPaths.rbegin(); path != m_keyPaths.rend(); ++path)
    {
        for (; !path->empty(); path->resize(path->find(OLESTR('\\')) == path->npos ? 0 : path->rfind(OLESTR('\\'))))
            RegDeleteKeyW(m_key.Get(), path->c_str());
    }
    m_key.Reset();
    RegDeleteKeyW(HKEY_CURRENT_USER, szKey);
}

const WCHAR* CWorld::Place(CQuestion& question)
{
    CWideString& place = m_places.emplace_back();
    if (question.IsText())
    {
        place = question.Text();
        if (place.starts_with(OLESTR('@')))
            place.replace(0, 1, m_szFolder);
        else if (place.starts_with(OLESTR('%')))
            place = BesideProgram(place.substr(1));
        return place.c_str();
    }
    if (question.Word() == "null")
        return nullptr;
    place = m_szFolder + CWideString(OLESTR("\\"));
    place.resize(question.Number<std::size_t>(), OLESTR('q'));
    return place.c_str();
}

std::string CWorld::ShownChanges() const
{
    std::string changes;
    if (!files.empty())
        return changes;
    const auto names = Listed(m_folder.Path());
    for (const auto& name : m_names)
        changes += names.contains(name) ? "" : ", without " + name;
    for (const auto& name : names)
        changes += m_names.contains(name) ? "" : ", with " + name;
    return changes;
}

HKEY CWorld::Key()
{
    if (!m_key)
        Create(HKEY_CURRENT_USER, szKey, m_key);
    return m_key.Get();
}

LSTATUS CWorld::CreateKey(const WCHAR* szPath)
{
    CUniqueKey key;
    const LSTATUS lStatus = Create(Key(), szPath, key);
    if (key && szPath)
        m_keyPaths.emplace_back(szPath);
    return lStatus;
}
} // namespace answers
