#include "TestSupport.hpp"
#include "foundation/TypedStreamArchiver.hpp"
#include "foundation/TypedStreamUnarchiver.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

namespace vexto {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Joins parts written as hex ("84 01 40") or, after a leading quote, as text ("'NSColor").
Bytes seq(std::initializer_list<std::string_view> parts)
{
    Bytes out;
    for (std::string_view part : parts) {
        const Bytes bytes =
            part.starts_with('\'') ? test::bytesOf(part.substr(1)) : test::hexBytes(part);
        out.insert(out.end(), bytes.begin(), bytes.end());
    }
    return out;
}

const Bytes littleEndianHeader = seq({"04 0b", "'streamtyped", "81 e8 03"});
const Bytes colorClassChain = seq({"84 84 07", "'NSColor", "00 84 84 08", "'NSObject", "00 85"});

Bytes rootColor(std::initializer_list<std::string_view> contents)
{
    Bytes out = littleEndianHeader;
    const Bytes head = seq({"84 01 40 84"});
    out.insert(out.end(), head.begin(), head.end());
    out.insert(out.end(), colorClassChain.begin(), colorClassChain.end());
    const Bytes rest = seq(contents);
    out.insert(out.end(), rest.begin(), rest.end());
    return out;
}

// Colours whose archives were captured from the platform's archiver.
struct KnownArchive {
    const char* name;
    Color color;
    Bytes bytes;
};

std::vector<KnownArchive> knownArchives()
{
    return {
        {"calibrated rgb sample", Color::calibratedRGB(0.96862745f, 0.29019609f, 0.24313726f, 1.0f),
         rootColor({"84 01 63 01 84 04 66 66 66 66", "83 f8 f7 77 3f 83 95 94 94 3e",
                    "83 f9 f8 78 3e 01 86"})},
        {"red", Color::calibratedRGB(1, 0, 0, 1),
         rootColor({"84 01 63 01 84 04 66 66 66 66 01 00 00 01 86"})},
        {"dark grey", Color::calibratedWhite(1.0f / 3.0f, 1),
         rootColor({"84 01 63 03 84 02 66 66 83 ab aa aa 3e 01 86"})},
        {"catalog",
         Color::catalog("System", "controlColor",
                        std::make_shared<Color>(Color::calibratedWhite(2.0f / 3.0f, 1))),
         rootColor({"84 01 63 06 84 03 40 40 40", "84 84 84 08", "'NSString", "01 94 84 01 2b 06",
                    "'System", "86 84 96 98 0c", "'controlColor",
                    "86 84 93 95 03 84 02 66 66 83 ab aa 2a 3f 01 86 86"})},
    };
}

TEST(TypedStreamTest, WritesColoursByteForByteAsThePlatformDoes)
{
    for (const auto& known : knownArchives()) {
        EXPECT_EQ(TypedStreamArchiver::archivedDataWithRootObject(known.color), known.bytes)
            << known.name;
    }
}

TEST(TypedStreamTest, ReadsThePlatformsColourArchives)
{
    for (const auto& known : knownArchives()) {
        const auto object = TypedStreamUnarchiver::unarchiveObjectWithData(known.bytes);
        ASSERT_TRUE(object) << known.name;
        EXPECT_EQ(std::get<Color>(*object), known.color) << known.name;
    }
}

TEST(TypedStreamTest, WritesAndReadsStrings)
{
    const Bytes hello =
        seq({"04 0b", "'streamtyped", "81 e8 03 84 01 40 84 84 84 08", "'NSString", "01 84 84 08",
             "'NSObject", "00 85 84 01 2b 0c", "'Hello, world", "86"});
    EXPECT_EQ(TypedStreamArchiver::archivedDataWithRootObject(std::string("Hello, world")), hello);
    EXPECT_EQ(TypedStreamUnarchiver::unarchiveObjectWithData(hello),
              ArchivedObject(std::string("Hello, world")));
    const std::string arabic = "\xd9\x85\xd8\xb1\xd8\xad\xd8\xa8\xd8\xa7";
    const std::string longText(300, 'x');
    for (const std::string& text : {arabic, longText, std::string()}) {
        const Bytes archive = TypedStreamArchiver::archivedDataWithRootObject(text);
        EXPECT_EQ(TypedStreamUnarchiver::unarchiveObjectWithData(archive), ArchivedObject(text));
    }
}

TEST(TypedStreamTest, ReadsBigEndianStreams)
{
    const Bytes darkGrey = seq({"04 0b", "'typedstream", "81 03 e8 84 01 40 84"});
    Bytes bytes = darkGrey;
    bytes.insert(bytes.end(), colorClassChain.begin(), colorClassChain.end());
    const Bytes rest = seq({"84 01 63 03 84 02 66 66 83 3e aa aa ab 01 86"});
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    EXPECT_EQ(TypedStreamUnarchiver::unarchiveObjectWithData(bytes),
              ArchivedObject(Color::calibratedWhite(1.0f / 3.0f, 1)));
}

TEST(TypedStreamTest, EveryColourSpaceAndAwkwardComponentRoundTrips)
{
    const Color colors[] = {
        Color::deviceRGB(0.1f, -0.5f, 2.0f, 0.25f),
        Color::deviceWhite(40000.0f, 1),             // integral beyond 16 bits
        Color::calibratedWhite(-110.0f, 127.0f),     // the edges of the one-byte form
        Color::calibratedWhite(-111.0f, 128.0f),     // just past them
        Color::calibratedWhite(3e9f, 2147483648.0f), // integral beyond 32 bits
        Color::deviceCMYK(0.1f, 0.2f, 0.3f, 0.4f, 0.5f),
        Color::calibratedRGB(INFINITY, 0, 0, 1),
        Color::catalog("System", "controlColor", nullptr),
        Color::catalog("Apple", "x",
                       std::make_shared<Color>(Color::alternateSelectedControlColor())),
    };
    for (const Color& color : colors) {
        const Bytes archive = TypedStreamArchiver::archivedDataWithRootObject(color);
        EXPECT_EQ(TypedStreamUnarchiver::unarchiveObjectWithData(archive), ArchivedObject(color))
            << color.description();
    }
}

TEST(TypedStreamTest, MalformedArchivesReadAsNone)
{
    const Bytes red = knownArchives()[1].bytes;
    // Every truncation, and every single-byte corruption, is refused or read without harm.
    for (std::size_t length = 0; length < red.size(); ++length) {
        EXPECT_FALSE(TypedStreamUnarchiver::unarchiveObjectWithData(
            std::span<const std::uint8_t>(red.data(), length)))
            << length;
    }
    for (std::size_t i = 0; i < red.size(); ++i) {
        for (std::uint8_t value : {0x00, 0x7f, 0x80, 0x84, 0x85, 0x86, 0x92, 0xff}) {
            Bytes corrupted = red;
            corrupted[i] = value;
            TypedStreamUnarchiver::unarchiveObjectWithData(corrupted);
        }
    }
    const Bytes refused[] = {
        seq({"03 0b", "'streamtyped", "81 e8 03 84 01 40 85"}), // old streamer version
        seq({"04 0b", "'streamtypee", "81 e8 03 84 01 40 85"}), // unknown signature
        seq({"04 0b", "'streamtyped", "81 e8 03 84 01 40 85"}), // nil root
        seq({"04 0b", "'streamtyped", "81 e8 03 84 01 40 99"}), // reference to nothing
        seq({"04 0b", "'streamtyped", "81 e8 03 84 01 40 8a"}), // reserved tag
        rootColor({"84 01 63 07 84 02 66 66 00 00 86"}),        // unknown colour kind
        rootColor({"84 01 63 03 84 01 66 00 86"}),              // wrong component group
        rootColor({"84 01 63 03 84 02 66 66 00 00"}),           // no end of object
        rootColor({"84 01 63 06 84 03 40 40 40 92 92 92 86"}),  // catalog naming itself
        rootColor({"84 01 63 06 84 03 40 40 40 93 93 85 86"}),  // a class as a name
        rootColor({"84 01 63 03 84 02 66 66 00 00 86"}) /* ok */,
    };
    for (std::size_t i = 0; i + 1 < std::size(refused); ++i) {
        EXPECT_FALSE(TypedStreamUnarchiver::unarchiveObjectWithData(refused[i])) << i;
    }
    EXPECT_TRUE(TypedStreamUnarchiver::unarchiveObjectWithData(refused[std::size(refused) - 1]));
}

TEST(TypedStreamTest, RefusesCatalogColoursNestedTooDeeply)
{
    auto archiveNested = [](int levels) {
        Color color = Color::calibratedWhite(0, 1);
        for (int i = 0; i < levels; ++i) {
            color = Color::catalog("System", "c", std::make_shared<Color>(color));
        }
        return TypedStreamArchiver::archivedDataWithRootObject(color);
    };
    EXPECT_TRUE(TypedStreamUnarchiver::unarchiveObjectWithData(archiveNested(8)));
    EXPECT_FALSE(TypedStreamUnarchiver::unarchiveObjectWithData(
        archiveNested(TypedStreamUnarchiver::maximumNesting + 1)));
}

TEST(TypedStreamTest, LongChainsOfNewSuperclassesAreRefusedWithoutExhaustingTheStack)
{
    // A colour whose class has thousands of new superclasses: each used to cost a stack frame.
    const auto chainOf = [](int superclasses) {
        Bytes out = littleEndianHeader;
        const Bytes head = seq({"84 01 40 84 84 84 07", "'NSColor", "00"});
        out.insert(out.end(), head.begin(), head.end());
        for (int i = 0; i < superclasses; ++i) {
            const std::string name = "S" + std::to_string(i);
            out.insert(out.end(), {0x84, 0x84, static_cast<std::uint8_t>(name.size())});
            out.insert(out.end(), name.begin(), name.end());
            out.push_back(0x00);
        }
        const Bytes rest = seq({"85 84 01 63 03 84 02 66 66 00 00 86"});
        out.insert(out.end(), rest.begin(), rest.end());
        return out;
    };
    EXPECT_TRUE(TypedStreamUnarchiver::unarchiveObjectWithData(chainOf(3)));
    EXPECT_FALSE(TypedStreamUnarchiver::unarchiveObjectWithData(
        chainOf(TypedStreamUnarchiver::maximumNesting + 1)));
    EXPECT_FALSE(TypedStreamUnarchiver::unarchiveObjectWithData(chainOf(100'000)));
}

} // namespace
} // namespace vexto
