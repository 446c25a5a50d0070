#include "answers/Shown.h"
#include "answers/Subjects.h"

#include "values/Unique.h"

#include <vector>

namespace answers
{
namespace
{
constexpr WCHAR szKey[] = OLESTR("Software\\PlatformAnswers");

constexpr NamedValue rights[] = {{"read", KEY_READ}, {"all", KEY_ALL_ACCESS}};
constexpr NamedValue types[] = {{"text", REG_SZ}, {"bytes", REG_BINARY}, {"number", REG_DWORD}, {"other", 1234}};

// An empty key. Names of keys are paths below it; values are its own, or those of the key that was opened last.
class CRegistry final : public CSubject
{
public:
    CRegistry()
    {
        Create(HKEY_CURRENT_USER, szKey, m_base);
    }
    ~CRegistry() override
    {
        // What lies below first.
        m_opened.Reset();
        for (auto path = m_paths.rbegin(); path != m_paths.rend(); ++path)
        {
            for (; !path->empty();
                 path->resize(path->find_last_of(OLESTR('\\')) + 1), path->resize(path->empty() ? 0 : path->size() - 1))
                RegDeleteKeyW(m_base.Get(), path->c_str());
        }
        m_base.Reset();
        RegDeleteKeyW(HKEY_CURRENT_USER, szKey);
    }

    std::string Answer(CQuestion& question) override
    {
        static constexpr Verb<CRegistry> verbs[] = {{"create", &CRegistry::CreateKey}, {"open", &CRegistry::OpenKey},
                                                    {"delete", &CRegistry::DeleteKey}, {"set", &CRegistry::Set},
                                                    {"query", &CRegistry::Query},      {"close", &CRegistry::CloseKey}};
        return AnswerBy(verbs, *this, question);
    }

private:
    static LSTATUS Create(HKEY hParent, const WCHAR* szPath, CUniqueKey& key)
    {
        return RegCreateKeyExW(hParent, szPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.Put(), nullptr);
    }
    HKEY Key() const
    {
        return m_opened ? m_opened.Get() : m_base.Get();
    }

    std::string CreateKey(CQuestion& question)
    {
        const WCHAR* const szPath = question.Text();
        CUniqueKey key;
        const LSTATUS lStatus = Create(m_base.Get(), szPath, key);
        if (lStatus == 0 && szPath)
            m_paths.emplace_back(szPath);
        return ShownStatus(lStatus);
    }
    std::string OpenKey(CQuestion& question)
    {
        const WCHAR* const szPath = question.Text();
        const REGSAM sam = question.OneOf(rights).dwValue;
        return ShownStatus(RegOpenKeyExW(m_base.Get(), szPath, 0, sam, m_opened.Put()));
    }
    std::string CloseKey(CQuestion&)
    {
        m_opened.Reset();
        return "ok";
    }
    std::string DeleteKey(CQuestion& question)
    {
        return ShownStatus(RegDeleteKeyW(m_base.Get(), question.Text()));
    }
    std::string Set(CQuestion& question)
    {
        const WCHAR* const szName = question.Text();
        const DWORD dwType = question.OneOf(types).dwValue;
        const std::string bytes = question.Bytes();
        // Behind a text without terminator stand bytes that are no terminator either: the platform looks at them.
        const std::string stored = bytes + "zzzz";
        return ShownStatus(RegSetValueExW(Key(), szName, 0, dwType, reinterpret_cast<const BYTE*>(stored.data()),
                                          static_cast<DWORD>(bytes.size())));
    }
    // With so much room; without a number the type and the size alone.
    std::string Query(CQuestion& question)
    {
        const WCHAR* const szName = question.Text();
        const bool bHasRoom = question.HasMore();
        DWORD cb = bHasRoom ? static_cast<DWORD>(question.Number()) : 77;
        std::string buffer(cb + 4, '#');
        DWORD dwType = 77;
        const LSTATUS lStatus =
            RegQueryValueExW(Key(), szName, nullptr, &dwType, bHasRoom ? reinterpret_cast<BYTE*>(buffer.data()) : nullptr, &cb);
        std::string answer = ShownStatus(lStatus);
        if (lStatus == 0 || lStatus == ERROR_MORE_DATA)
            answer += ", type " + std::to_string(dwType) + ", size " + std::to_string(cb);
        if (bHasRoom && lStatus != ERROR_FILE_NOT_FOUND)
            answer += ", " + ShownBytes(buffer.substr(0, buffer.find_last_not_of('#') + 1));
        return answer;
    }

    CUniqueKey m_base;
    CUniqueKey m_opened;
    std::vector<CWideString> m_paths;
};
} // namespace

std::unique_ptr<CSubject> AskRegistry()
{
    return std::make_unique<CRegistry>();
}
} // namespace answers
