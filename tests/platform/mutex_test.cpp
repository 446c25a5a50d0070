// That the platform's mutex keeps threads apart; what becomes of an abandoned one is asked where the log meets it.
#include "values/Unique.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
TEST(Mutex, KeepsThreadsApart)
{
    const CUniqueMutex mutex(CreateMutexW(nullptr, FALSE, nullptr));
    int nCounter = 0; // no atomic: the mutex is what protects it
    const auto count = [&]
    {
        for (int i = 0; i < 1000; ++i)
        {
            EXPECT_EQ(WaitForSingleObject(mutex.Get(), INFINITE), WAIT_OBJECT_0);
            ++nCounter;
            EXPECT_TRUE(ReleaseMutex(mutex.Get()));
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(nCounter, 2000);
}
} // namespace
