#include "foundation/PropertyListCodec.hpp"

#include "TestSupport.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace vexto {
namespace {

using test::bytesOf;

constexpr std::string_view header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                    "<plist version=\"1.0\">\n";

PlistValue readXml(std::string_view text)
{
    auto result = PropertyListCodec::read(bytesOf(text));
    EXPECT_TRUE(result.value) << result.error;
    return result.value.value_or(PlistValue());
}

std::string nested(int depth, std::string_view open, std::string_view close)
{
    std::string text(header);
    for (int i = 0; i < depth; ++i) {
        text += open;
    }
    for (int i = 0; i < depth; ++i) {
        text += close;
    }
    return text + "</plist>\n";
}

TEST(PropertyListCodecTest, CanonicalXmlRoundTripsByteForByte)
{
    const std::string golden = test::readText(test::testData("golden.plist"));
    ASSERT_FALSE(golden.empty());
    const PlistValue value = readXml(golden);
    EXPECT_EQ(PropertyListCodec::xmlFrom(value), golden);
}

TEST(PropertyListCodecTest, BinaryReadsBackAsTheSameValueAndWritesCanonicalXml)
{
    const std::string golden = test::readText(test::testData("golden.plist"));
    const PlistValue value = readXml(golden);
    const auto binary = PropertyListCodec::binaryFrom(value);
    ASSERT_TRUE(binary);
    EXPECT_EQ(std::string(binary->begin(), binary->begin() + 8), "bplist00");
    const auto reread = PropertyListCodec::read(*binary);
    ASSERT_TRUE(reread.value) << reread.error;
    EXPECT_EQ(reread.format, PropertyListCodec::Format::Binary);
    EXPECT_EQ(*reread.value, value);
    EXPECT_EQ(PropertyListCodec::xmlFrom(*reread.value), golden);
}

TEST(PropertyListCodecTest, WritesValuesInThePlatformsLayout)
{
    PlistDictionary settings{{"Timeout", 0.2f},
                             {"Exact", 0.2},
                             {"Negative", -5},
                             {"Largest", std::numeric_limits<long long>::max()},
                             {"Flag", false},
                             {"List", PlistArray{}},
                             {"Table", PlistDictionary{}}};
    const std::string expected = std::string(header) +
                                 "<dict>\n"
                                 "\t<key>Exact</key>\n\t<real>0.20000000000000001</real>\n"
                                 "\t<key>Flag</key>\n\t<false/>\n"
                                 "\t<key>Largest</key>\n\t<integer>9223372036854775807</integer>\n"
                                 "\t<key>List</key>\n\t<array/>\n"
                                 "\t<key>Negative</key>\n\t<integer>-5</integer>\n"
                                 "\t<key>Table</key>\n\t<dict/>\n"
                                 "\t<key>Timeout</key>\n\t<real>0.20000000298023224</real>\n"
                                 "</dict>\n</plist>\n";
    EXPECT_EQ(PropertyListCodec::xmlFrom(settings), expected);
}

TEST(PropertyListCodecTest, WritesSpecialRealsDatesAndDeepDataAsThePlatformDoes)
{
    const PlistArray reals{0.0, -0.0, std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, 3.0};
    EXPECT_EQ(PropertyListCodec::xmlFrom(reals),
              std::string(header) +
                  "<array>\n\t<real>0.0</real>\n\t<real>0.0</real>\n\t<real>nan</real>\n"
                  "\t<real>+infinity</real>\n\t<real>-infinity</real>\n"
                  "\t<real>1.0000000000000001e+300</real>\n\t<real>3</real>\n</array>\n</plist>\n");
    EXPECT_EQ(PropertyListCodec::xmlFrom(PlistDate{-1.0}),
              std::string(header) + "<date>2000-12-31T23:59:59Z</date>\n</plist>\n");
    // Below eight levels the lines stop growing shorter: 12 characters, 9 bytes each.
    PlistValue deep = PlistData(10, 0xFF);
    for (int i = 0; i < 10; ++i) {
        deep = PlistArray{deep};
    }
    const std::string xml = *PropertyListCodec::xmlFrom(deep);
    const std::string tabs8(8, '\t');
    const std::string tabs10(10, '\t');
    EXPECT_NE(xml.find("\n" + tabs10 + "<data>\n" + tabs8 + "////////////\n" + tabs8 + "/w==\n" +
                       tabs10 + "</data>\n"),
              std::string::npos)
        << xml;
}

TEST(PropertyListCodecTest, SortsKeysByUtf16CodeUnitsAsThePlatformDoes)
{
    // U+1F600 is a surrogate pair (D83D DE00) and sorts before U+FF21 in UTF-16,
    // although its UTF-8 bytes (F0 ...) sort after those of U+FF21 (EF ...).
    PlistDictionary keys{{"\uFF21", 1}, {"\U0001F600", 2}, {"b", 3}, {"B", 4}};
    const auto xml = PropertyListCodec::xmlFrom(keys);
    ASSERT_TRUE(xml);
    const auto at = [&](std::string_view key) {
        return xml->find("<key>" + std::string(key));
    };
    EXPECT_LT(at("B"), at("b"));
    EXPECT_LT(at("b"), at("\U0001F600"));
    EXPECT_LT(at("\U0001F600"), at("\uFF21"));
    EXPECT_EQ(readXml(*xml), PlistValue(keys));
}

TEST(PropertyListCodecTest, AcceptsAnyRootAndReportsUnusableInput)
{
    EXPECT_TRUE(
        readXml(std::string(header) + "<array><string>a</string></array></plist>").isArray());
    const std::string_view broken[] = {
        "",
        "not a property list at all",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key><string>abc",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key></plist>",
        "bplist00",
        "bplist00\x01\x02\x03",
    };
    for (std::string_view text : broken) {
        const auto result = PropertyListCodec::read(bytesOf(text));
        EXPECT_FALSE(result.value) << text;
        EXPECT_FALSE(result.error.empty()) << text;
    }
}

TEST(PropertyListCodecTest, RefusesNestingDeeperThanTheBound)
{
    const int limit = PropertyListCodec::maximumNesting;
    EXPECT_TRUE(PropertyListCodec::read(bytesOf(nested(limit - 2, "<array>", "</array>"))).value);
    for (int depth : {limit + 1, 10'000, 1'000'000}) {
        const auto result = PropertyListCodec::read(bytesOf(nested(depth, "<array>", "</array>")));
        EXPECT_FALSE(result.value) << depth;
        EXPECT_EQ(result.error, "nested deeper than 512 levels");
    }
    const auto dictionaries = nested(10'000, "<dict><key>k</key>", "</dict>");
    EXPECT_FALSE(PropertyListCodec::read(bytesOf(dictionaries)).value);
    // Comments and CDATA cannot hide closing tags from the depth check.
    const auto hidden = nested(10'000, "<array><!-- </array> -->", "</array>");
    EXPECT_FALSE(PropertyListCodec::read(bytesOf(hidden)).value);
}

// A binary property list whose object i is an array holding object i+1: `depth` levels deep, or
// with `cycle` the last array holds the first again.
std::vector<std::uint8_t> chainedBinary(int depth, bool cycle)
{
    std::vector<std::uint8_t> bytes = bytesOf("bplist00");
    std::vector<std::uint32_t> offsets;
    for (int i = 0; i < depth; ++i) {
        offsets.push_back(static_cast<std::uint32_t>(bytes.size()));
        const bool last = i == depth - 1;
        if (last && !cycle) {
            bytes.push_back(0xA0);
            continue;
        }
        const std::uint32_t next = last ? 0 : static_cast<std::uint32_t>(i + 1);
        bytes.insert(bytes.end(), {0xA1, std::uint8_t(next >> 24), std::uint8_t(next >> 16),
                                   std::uint8_t(next >> 8), std::uint8_t(next)});
    }
    const auto table = static_cast<std::uint64_t>(bytes.size());
    for (std::uint32_t offset : offsets) {
        for (int shift : {24, 16, 8, 0}) {
            bytes.push_back(static_cast<std::uint8_t>(offset >> shift));
        }
    }
    bytes.insert(bytes.end(), {0, 0, 0, 0, 0, 0, 4, 4});
    for (std::uint64_t field : {static_cast<std::uint64_t>(depth), std::uint64_t{0}, table}) {
        for (int shift = 56; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<std::uint8_t>(field >> shift));
        }
    }
    return bytes;
}

TEST(PropertyListCodecTest, RefusesDeepOrCyclicBinaryLists)
{
    EXPECT_TRUE(PropertyListCodec::read(chainedBinary(100, false)).value);
    EXPECT_FALSE(PropertyListCodec::read(chainedBinary(300'000, false)).value);
    EXPECT_FALSE(PropertyListCodec::read(chainedBinary(3, true)).value);
}

TEST(PropertyListCodecTest, EveryTruncationOfAValidFileIsRefusedWithoutHarm)
{
    const std::string golden = test::readText(test::testData("golden.plist"));
    const auto binary = *PropertyListCodec::binaryFrom(readXml(golden));
    for (std::size_t length = 0; length < binary.size(); ++length) {
        const std::span<const std::uint8_t> prefix(binary.data(), length);
        EXPECT_FALSE(PropertyListCodec::read(prefix).value) << length;
    }
    for (std::size_t length = 0; length + 10 < golden.size(); length += 7) {
        PropertyListCodec::read(bytesOf(std::string_view(golden).substr(0, length)));
    }
}

TEST(PropertyListCodecTest, RefusesHugeFilesWithoutReadingThem)
{
    test::TemporaryFolder folder;
    const std::string path = folder.file("huge.plist");
    const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY, 0644);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::ftruncate(fd, 100 * 1024 * 1024), 0); // sparse: costs no disk
    ::close(fd);
    const auto result = PropertyListCodec::readFile(path);
    EXPECT_FALSE(result.value);
    EXPECT_EQ(result.error, "larger than 16 MiB");
    EXPECT_EQ(PropertyListCodec::readFile(folder.file("missing.plist")).error,
              "cannot be read (No such file or directory)");
}

// A binary property list from its objects' bytes, references two bytes wide; object 0 is the root.
std::vector<std::uint8_t> binaryOf(const std::vector<std::vector<std::uint8_t>>& objects)
{
    std::vector<std::uint8_t> bytes = bytesOf("bplist00");
    std::vector<std::uint32_t> offsets;
    for (const auto& object : objects) {
        offsets.push_back(static_cast<std::uint32_t>(bytes.size()));
        bytes.insert(bytes.end(), object.begin(), object.end());
    }
    const auto table = static_cast<std::uint64_t>(bytes.size());
    for (std::uint32_t offset : offsets) {
        for (int shift : {24, 16, 8, 0}) {
            bytes.push_back(static_cast<std::uint8_t>(offset >> shift));
        }
    }
    bytes.insert(bytes.end(), {0, 0, 0, 0, 0, 0, 4, 2});
    for (std::uint64_t field : {std::uint64_t{objects.size()}, std::uint64_t{0}, table}) {
        for (int shift = 56; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<std::uint8_t>(field >> shift));
        }
    }
    return bytes;
}

TEST(PropertyListCodecTest, RefusesTextThatCannotBeKeptOrWrittenBack)
{
    const std::vector<std::uint8_t> utf16Nul = {0x61, 0x00, 0x00};
    const std::vector<std::uint8_t> utf16LoneSurrogate = {0x61, 0xD8, 0x00};
    const std::vector<std::uint8_t> asciiNul = {0x52, 'a', 0x00};
    const std::vector<std::uint8_t> value = {0x09};
    // As a string, and as a dictionary key: libplist would abort on either.
    for (const auto& text : {utf16Nul, asciiNul, utf16LoneSurrogate}) {
        EXPECT_FALSE(PropertyListCodec::read(binaryOf({text})).value);
        EXPECT_FALSE(PropertyListCodec::read(binaryOf({{0xD1, 0, 1, 0, 2}, text, value})).value);
    }
    EXPECT_EQ(PropertyListCodec::read(binaryOf({utf16Nul})).error, "text holds a NUL character");
    // Dates beyond what 32 bits of seconds reach.
    for (std::uint64_t bits : {0x7FF8000000000000ull, 0x41F0000000000000ull /* 2^32 */}) {
        std::vector<std::uint8_t> date{0x33};
        for (int shift = 56; shift >= 0; shift -= 8) {
            date.push_back(static_cast<std::uint8_t>(bits >> shift));
        }
        EXPECT_EQ(PropertyListCodec::read(binaryOf({date})).error, "date out of range");
    }
    // A dictionary whose key is not text.
    EXPECT_FALSE(PropertyListCodec::read(binaryOf({{0xD1, 0, 1, 0, 1}, value})).value);
    EXPECT_TRUE(PropertyListCodec::read(binaryOf({{0x61, 0x00, 0xE9}})).value);

    const auto xml = [](std::string_view body) {
        return std::string(header) + "<string>" + std::string(body) + "</string></plist>";
    };
    EXPECT_EQ(PropertyListCodec::read(bytesOf(xml("caf\xE9"))).error, "text is not valid UTF-8");
    for (std::string_view refused : {"a&#0;b", "\xED\xA0\x80", "&#xD800;", "&bogus;", "a & b"}) {
        EXPECT_FALSE(PropertyListCodec::read(bytesOf(xml(refused))).value) << refused;
    }
    EXPECT_EQ(PropertyListCodec::read(bytesOf(xml(std::string_view("a\0b", 3)))).error,
              "text holds a NUL character");
    EXPECT_EQ(readXml(xml("&lt;&#233;&#x1F600;<![CDATA[&amp;]]>")),
              PlistValue("<\u00E9\U0001F600&amp;"));
}

TEST(PropertyListCodecTest, QuotesInsideTagsCannotHideNesting)
{
    // An apostrophe is a quote in an attribute, and only there.
    const std::string opened = std::string(header).replace(header.find("<plist"), 6, "<plist x='");
    EXPECT_FALSE(PropertyListCodec::read(bytesOf(nested(600, "<array>", "</array>"))).value);
    const std::string tricky =
        "<?xml version=\"1.0\"?><plist x='>" + std::string(50'000, '[') + "'>";
    std::string deep = "<?xml version=\"1.0\"?><plist x='a'>";
    for (int i = 0; i < 50'000; ++i) {
        deep += "<array y='>'>";
    }
    EXPECT_EQ(PropertyListCodec::read(bytesOf(deep)).error, "nested deeper than 512 levels");
    EXPECT_FALSE(PropertyListCodec::read(bytesOf(opened)).value);
    EXPECT_FALSE(PropertyListCodec::read(bytesOf(tricky)).value);
}

TEST(PropertyListCodecTest, SharedReferencesCountOnceForEveryUse)
{
    // Each level refers twice to the next: 40 levels expand to 2^40 values.
    std::vector<std::vector<std::uint8_t>> levels;
    for (std::uint8_t i = 0; i < 40; ++i) {
        levels.push_back({0xA2, 0, std::uint8_t(i + 1), 0, std::uint8_t(i + 1)});
    }
    levels.push_back({0x09});
    const auto result = PropertyListCodec::read(binaryOf(levels));
    EXPECT_FALSE(result.value);
    EXPECT_EQ(result.error, "holds more than 100000 values");
    // A few levels of sharing are fine and read as copies.
    std::vector<std::vector<std::uint8_t>> few(levels.end() - 4, levels.end());
    for (std::uint8_t i = 0; i < 3; ++i) {
        few[i] = {0xA2, 0, std::uint8_t(i + 1), 0, std::uint8_t(i + 1)};
    }
    const auto shared = PropertyListCodec::read(binaryOf(few));
    ASSERT_TRUE(shared.value);
    EXPECT_EQ((*shared.value->asArray())[0], (*shared.value->asArray())[1]);
}

TEST(PropertyListCodecTest, RefusesXmlWithMoreValuesThanTheBound)
{
    std::string many(header);
    many += "<array>";
    for (std::size_t i = 0; i < PropertyListCodec::maximumValues; ++i) {
        many += "<true/>";
    }
    many += "</array></plist>";
    EXPECT_EQ(PropertyListCodec::read(bytesOf(many)).error, "holds more than 100000 values");
}

TEST(PropertyListCodecTest, ReadsEveryKindOfXmlValue)
{
    const PlistValue value = readXml(std::string(header) + R"(<dict>
        <key>i</key><integer> -42 </integer><key>h</key><integer>0x10</integer>
        <key>big</key><integer>99999999999999999999</integer>
        <key>r</key><real>0.5</real><key>n</key><real>nan</real><key>e</key><real>-1e999</real>
        <key>d</key><date>2001-01-02T00:00:01Z</date>
        <key>b</key><data> AAEC
          /w== </data>
        <key>t</key><true/><key>f</key><false></false><key>s</key><string/>
        <!-- a comment --><key>a</key><array/><key>dd</key><dict/></dict></plist>)");
    const PlistDictionary& d = *value.asDictionary();
    EXPECT_EQ(d.at("i"), PlistValue(-42));
    EXPECT_EQ(d.at("h"), PlistValue(16));
    EXPECT_EQ(d.at("big"), PlistValue(std::numeric_limits<long long>::max()));
    EXPECT_EQ(d.at("r"), PlistValue(0.5));
    EXPECT_TRUE(std::isnan(*d.at("n").asReal()));
    EXPECT_EQ(d.at("e"), PlistValue(-HUGE_VAL));
    EXPECT_EQ(d.at("d"), PlistValue(PlistDate{86401.0}));
    EXPECT_EQ(d.at("b"), PlistValue(PlistData{0, 1, 2, 255}));
    EXPECT_EQ(d.at("t"), PlistValue(true));
    EXPECT_EQ(d.at("f"), PlistValue(false));
    EXPECT_EQ(d.at("s"), PlistValue(""));
    EXPECT_EQ(d.at("a"), PlistValue(PlistArray{}));
    for (std::string_view refused :
         {"<integer></integer>", "<integer>1x</integer>", "<real>one</real>",
          "<date>2001-13-01T00:00:00Z</date>", "<data>A*==</data>", "<true>x</true>", "<unknown/>",
          "<string>a</string><string>b</string>", "<dict><string>v</string></dict>",
          "<dict><key>k</key></dict>", "<array></dict>"}) {
        EXPECT_FALSE(PropertyListCodec::read(
                         bytesOf(std::string(header) + std::string(refused) + "</plist>"))
                         .value)
            << refused;
    }
}

TEST(PropertyListCodecTest, WillNotWriteValuesNestedBeyondTheBound)
{
    PlistValue deep = PlistArray{};
    for (int i = 0; i < PropertyListCodec::maximumNesting + 1; ++i) {
        deep = PlistArray{deep};
    }
    EXPECT_FALSE(PropertyListCodec::xmlFrom(deep));
    EXPECT_FALSE(PropertyListCodec::binaryFrom(deep));
}

} // namespace
} // namespace vexto
