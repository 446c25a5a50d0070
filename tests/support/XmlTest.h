// Cases that work on documents, each inside an apartment.
#pragma once

#include "host/Module.h"
#include "values/Bstr.h"

#include <msxml2.h>

#include <gtest/gtest.h>

namespace tests::xml
{
class XmlTest : public testing::Test
{
    const CComApartment m_apartment;
};
} // namespace tests::xml
