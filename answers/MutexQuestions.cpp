#include "answers/Shown.h"
#include "answers/Subjects.h"

#include "values/Unique.h"

#include <thread>

namespace answers
{
namespace
{
// One mutex, free at first.
class CMutexes final : public CSubject
{
public:
    std::string Answer(CQuestion& question) override
    {
        static constexpr Verb<CMutexes> verbs[] = {{"wait", &CMutexes::Wait},
                                                   {"release", &CMutexes::Release},
                                                   {"thread", &CMutexes::Thread},
                                                   {"close", &CMutexes::Close}};
        return AnswerBy(verbs, *this, question);
    }

private:
    std::string Wait(CQuestion& question)
    {
        static constexpr NamedValue limits[] = {{"now", 0}, {"without-end", INFINITE}};
        SetLastError(4711);
        const DWORD dwResult = WaitForSingleObject(m_mutex.Get(), question.OneOf(limits).dwValue);
        switch (dwResult)
        {
        case WAIT_OBJECT_0:
            return "taken";
        case WAIT_ABANDONED:
            return "taken, abandoned";
        case WAIT_TIMEOUT:
            return "not had";
        default:
            return ShownSuccess(false);
        }
    }
    std::string Release(CQuestion&)
    {
        SetLastError(4711);
        return ShownSuccess(ReleaseMutex(m_mutex.Get()) != FALSE);
    }
    std::string Close(CQuestion&)
    {
        m_mutex.Reset();
        return "ok";
    }
    // The rest of the question is asked on a thread of its own, which then ends.
    std::string Thread(CQuestion& question)
    {
        std::string answers;
        std::thread(
            [&]
            {
                while (question.HasMore())
                    answers += (answers.empty() ? "" : "; ") + Answer(question);
            })
            .join();
        return answers;
    }

    CUniqueMutex m_mutex{CreateMutexW(nullptr, FALSE, nullptr)};
};
} // namespace

std::unique_ptr<CSubject> AskMutexes()
{
    return std::make_unique<CMutexes>();
}
} // namespace answers
