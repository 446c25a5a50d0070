// Cases that work on documents, each inside an apartment.
#pragma once

#include "values/Bstr.h"
#include "values/ComRef.h"

#include <msxml2.h>

#include <gtest/gtest.h>

namespace tests::xml
{
class XmlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_GE(CoInitializeEx(nullptr, COINIT_MULTITHREADED), 0);
    }
    void TearDown() override
    {
        CoUninitialize();
    }
};
} // namespace tests::xml
