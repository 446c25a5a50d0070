// What the stand-in's formatting refuses, instead of writing what the platform would not.
#include <windows.h>

#include <gtest/gtest.h>

#include <cerrno>

TEST(WideFormat, RefusesConversionsThatItDoesNotKnow)
{
    for (const WCHAR* szFormat : {u"%i", u"%5s", u"%*d", u"%.3d", u"%-5d", u"%ld", u"%I64d", u"%S", u"%c", u"%", u"%5", u"%5%"})
    {
        WCHAR szBuffer[200];
        errno = 0;
        EXPECT_EQ(_snwprintf(szBuffer, std::size(szBuffer), szFormat, u"text", u"text"), -1)
            << testing::PrintToString(std::u16string(szFormat));
        EXPECT_EQ(errno, EINVAL);
    }
}
