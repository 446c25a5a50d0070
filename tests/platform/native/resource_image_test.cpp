// The stand-in's reader of compiled resources, on whole and on damaged images. It meets files from outside.
#include "platform/kernel32/ResourceImage.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string_view>
#include <vector>

namespace
{
using namespace platform;
using Image = std::vector<std::byte>;

template <class Value>
void Put(Image& image, Value value)
{
    const auto* const pBytes = reinterpret_cast<const std::byte*>(&value);
    image.insert(image.end(), pBytes, pBytes + sizeof value);
}

void PutOrdinal(Image& image, WORD wOrdinal)
{
    Put<WORD>(image, 0xFFFF);
    Put<WORD>(image, wOrdinal);
}

// A record with a numbered type and name, its data padded to the next record.
void PutRecord(Image& image, WORD wType, WORD wName, WORD wLanguage, std::string_view data)
{
    Put<DWORD>(image, static_cast<DWORD>(data.size()));
    Put<DWORD>(image, 32);
    PutOrdinal(image, wType);
    PutOrdinal(image, wName);
    Put<DWORD>(image, 0);
    Put<WORD>(image, 0);
    Put<WORD>(image, wLanguage);
    Put<DWORD>(image, 0);
    Put<DWORD>(image, 0);
    for (const char character : data)
        image.push_back(static_cast<std::byte>(character));
    while (image.size() % 4 != 0)
        image.push_back({});
}

Image WholeImage()
{
    Image image;
    PutRecord(image, 0, 0, 0, "");
    PutRecord(image, 6, 7, 0x0409, "english");
    PutRecord(image, 6, 7, 0x0407, "deutsch!");
    return image;
}

std::string_view DataOf(const ResourceRecord& record)
{
    return {reinterpret_cast<const char*>(record.data.data()), record.data.size()};
}

TEST(ResourceImage, GivesTheRecordsInOrder)
{
    const Image image = WholeImage();
    const auto records = ReadResourceImage(image);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].wType, 6);
    EXPECT_EQ(records[0].wName, 7);
    EXPECT_EQ(DataOf(records[0]), "english");
    EXPECT_EQ(DataOf(records[1]), "deutsch!");
}

// Each image lies at the end of a heap block of its own size, where an address sanitizer sees one byte too far.
TEST(ResourceImage, GivesWhatStandsBeforeACut)
{
    const Image whole = WholeImage();
    for (std::size_t cb = 0; cb <= whole.size(); ++cb)
    {
        const Image image(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(cb));
        const auto records = ReadResourceImage(image);
        // The last byte of padding is no part of any record.
        EXPECT_EQ(records.size(), cb >= whole.size() ? 2u : cb >= 32 + 32 + 7 ? 1u : 0u) << cb;
    }
}

TEST(ResourceImage, SurvivesAnyChangedByte)
{
    const Image whole = WholeImage();
    std::minstd_rand random(1); // the same changes in every run
    for (int i = 0; i < 20'000; ++i)
    {
        Image image = whole;
        for (int nChanges = 0; nChanges < 3; ++nChanges)
            image[16 + random() % (image.size() - 16)] = static_cast<std::byte>(random());
        for (const auto& record : ReadResourceImage(image))
        {
            EXPECT_LE(record.data.size(), image.size());
            if (!record.data.empty())
            {
                EXPECT_GE(record.data.data(), image.data());
            }
        }
    }
}
} // namespace
