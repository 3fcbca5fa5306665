#include <gtest/gtest.h>
#include <sys/stat.h>

#include "VelkoCore/Import/PropertyList.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using Error = PropertyListError;
using namespace std::string_literals;

/// Hands out one value whatever it is given, and remembers that it was asked.
class CannedReader final : public PropertyListReader {
 public:
    [[nodiscard]] std::expected<PropertyList, PropertyListError> read(
        std::span<const std::byte> bytes) const override {
        sawBytes = bytes.size();
        return list;
    }

    PropertyList list{true};
    mutable std::optional<std::size_t> sawBytes;
};

std::span<const std::byte> bytesOf(const std::string& text) {
    return std::as_bytes(std::span{text});
}

std::string bigEndian(std::uint64_t number, int width) {
    std::string bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> static_cast<unsigned>(shift) & 0xFFU);
    }
    return bytes;
}

/// A binary property list of the given objects, with references of two bytes.
std::string binaryOf(const std::vector<std::string>& objects, std::uint64_t top = 0) {
    std::string file = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += bigEndian(file.size(), 4);
        file += object;
    }
    const std::size_t tableOffset = file.size();
    return file + table + "\0\0\0\0\0\0\x04\x02"s + bigEndian(objects.size(), 8) + bigEndian(top, 8) +
           bigEndian(tableOffset, 8);
}

std::string arrayOf(const std::vector<std::uint64_t>& elements) {
    std::string object{static_cast<char>(0xA0U + elements.size())};
    for (const std::uint64_t element : elements) {
        object += bigEndian(element, 2);
    }
    return object;
}

/// Arrays within each other, the innermost one empty.
std::vector<std::string> chain(std::uint64_t depth) {
    std::vector<std::string> objects;
    for (std::uint64_t next = 1; next < depth; ++next) {
        objects.push_back(arrayOf({next}));
    }
    objects.push_back(arrayOf({}));
    return objects;
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int time = 0; time < times; ++time) {
        result += text;
    }
    return result;
}

std::string xmlOf(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><!DOCTYPE plist PUBLIC "-//A//B//EN" "c"><plist version="1.0">)" +
           content + "</plist>\n";
}

struct Refused {
    std::string what;
    std::string file;
    Error error = Error::malformed;
};

void expectRefused(const std::vector<Refused>& cases) {
    for (const auto& [what, file, error] : cases) {
        const CannedReader reader;
        const auto list = readPropertyList(bytesOf(file), reader);
        ASSERT_FALSE(list) << what;
        EXPECT_EQ(list.error(), error) << what;
        EXPECT_EQ(reader.sawBytes, std::nullopt) << what << " reached the reader";
    }
}

void expectRead(const std::string& what, const std::string& file) {
    const CannedReader reader;
    EXPECT_TRUE(readPropertyList(bytesOf(file), reader)) << what;
    EXPECT_TRUE(reader.sawBytes) << what;
}

TEST(PropertyList, KeepsHostileBinaryFilesFromTheReader) {
    const std::string small = binaryOf({arrayOf({1}), "\x08"});
    std::vector<std::string> laughs;
    for (std::uint64_t level = 1; level < 9; ++level) {
        laughs.push_back(arrayOf({level, level, level, level, level, level}));
    }
    laughs.emplace_back("\x09");
    std::vector<std::string> sharedChain = chain(30);
    sharedChain.push_back(arrayOf({0, 31}));
    sharedChain.push_back(arrayOf({32}));
    sharedChain.push_back(arrayOf({0}));
    const std::string longText = "\x5F\x12"s + bigEndian(1U << 20U, 4) + std::string(1U << 20U, 'x');
    expectRefused({
        {"nothing", ""},
        {"an empty trailer", "bplist00" + std::string(32, '\0')},
        {"another version", "bplist15" + small.substr(8)},
        {"half a file", small.substr(0, small.size() - 1)},
        {"a top object that is not there", binaryOf({"\x08"}, 1)},
        {"more objects than offsets",
         small.substr(0, small.size() - 24) + bigEndian(1ULL << 61U, 8) + small.substr(small.size() - 16)},
        {"an offset table outside", small.substr(0, small.size() - 8) + bigEndian(~0ULL, 8)},
        {"a reference that is not there", binaryOf({arrayOf({7})})},
        {"an array of itself", binaryOf({arrayOf({0})})},
        {"a longer circle", binaryOf({arrayOf({1}), arrayOf({2}), arrayOf({3, 0}), "\x08"})},
        {"an unknown kind", binaryOf({std::string(1, 0x70)})},
        {"a text longer than the file", binaryOf({"\x5F\x13" + bigEndian(~0ULL, 8)})},
        {"an array longer than the file", binaryOf({"\xAF\x13" + bigEndian(1ULL << 63U, 8)})},
        {"a length that is no integer", binaryOf({"\x5F\x51\xFF"})},
        {"a number cut off", binaryOf({"\x13"})},
        {"a key that is no text", binaryOf({"\xD1\0\1\0\1"s, "\x10\x01"})},
        {"a wide key with a NUL", binaryOf({"\xD1\0\1\0\2"s, "\x61\0\0"s, "\x08"})},
        {"arrays 33 deep", binaryOf(chain(33)), Error::tooDeep},
        {"a shared part, harmless where it is met first", binaryOf(sharedChain, 30), Error::tooDeep},
        {"a million values written out", binaryOf(laughs), Error::tooManyNodes},
        {"a long text, shared",
         binaryOf({arrayOf(std::vector<std::uint64_t>(14, 1)), arrayOf({2, 2}), longText}), Error::tooLarge},
        {"too many bytes", std::string(PropertyListLimits::bytes + 1, ' '), Error::tooLarge},
    });
    expectRead("a small file", small);
    expectRead("arrays 32 deep", binaryOf(chain(32)));
    expectRead("a text on both sides", binaryOf({"\xD1\0\1\0\1"s, "\x51\xC3"}));
}

TEST(PropertyList, KeepsHostileXmlFilesFromTheReader) {
    const std::string text = "<string>x</string>";
    expectRefused({
        {"no markup", "hello"},
        {"another root", "<dict/>"},
        {"a second root", xmlOf(text) + "<plist/>"},
        {"text after", xmlOf(text) + "x"},
        {"crossed tags", xmlOf("<array><dict></array></dict>")},
        {"a tag without an end", "<plist><array"},
        {"a comment without an end", xmlOf("<!-- ")},
        {"entities of its own",
         R"x(<!DOCTYPE plist [<!ENTITY a "aaaa">]><plist><string>&a;</string></plist>)x"},
        {"entities behind a quoted bracket",
         R"x(<!DOCTYPE plist SYSTEM ">" [<!ENTITY a "aaaa">]><plist><string>&a;</string></plist>)x"},
        {"declarations inside", xmlOf("<!DOCTYPE plist>")},
        {"a tag hidden in an attribute", xmlOf(R"(<array a="></array>"></array>)")},
        {"another encoding", R"(<?xml version="1.0" encoding="UTF-7"?><plist>+ADw-</plist>)"},
        {"wide characters", "<\0p\0l\0i\0s\0t\0/\0>\0"s},
        {"arrays 33 deep", xmlOf(repeated("<array>", 33) + repeated("</array>", 33)), Error::tooDeep},
        {"empty ones count too", xmlOf(repeated("<array>", 32) + "<array/>" + repeated("</array>", 32)),
         Error::tooDeep},
        {"too many values", xmlOf("<array>" + repeated("<true/>", 100'000) + "</array>"),
         Error::tooManyNodes},
    });
    expectRead("a mark and blanks before", "\xEF\xBB\xBF\r\n " + xmlOf(text));
    expectRead("comments and sections", xmlOf("<!-- <array> --><string><![CDATA[<array>]]></string>"));
    expectRead("arrays 32 deep", xmlOf(repeated("<array>", 32) + repeated("</array>", 32)));
    expectRead("many values", xmlOf("<array>" + repeated("<true/>", 99'999) + "</array>"));
}

TEST(PropertyList, ChecksWhatTheReaderGivesToo) {
    CannedReader reader;
    PropertyList deep{true};
    for (int level = 1; level < 32; ++level) {
        deep = {PropertyList::Dictionary{{"k", deep}}};
    }
    const std::string file = xmlOf("<true/>");
    reader.list = deep;
    EXPECT_TRUE(readPropertyList(bytesOf(file), reader));
    reader.list = {PropertyList::Array{deep}};
    EXPECT_EQ(readPropertyList(bytesOf(file), reader).error(), Error::tooDeep);
    reader.list = {PropertyList::Array(PropertyListLimits::nodes)};
    EXPECT_EQ(readPropertyList(bytesOf(file), reader).error(), Error::tooManyNodes);
    reader.list = {PropertyList::Array(17, {std::string(std::size_t{1} << 20U, 'x')})};
    EXPECT_EQ(readPropertyList(bytesOf(file), reader).error(), Error::tooLarge);
}

TEST(PropertyList, ReadsRegularFilesOfABoundedSize) {
    const TemporaryFolder folder;
    const CannedReader reader;
    const auto read = [&](const char* name) { return readPropertyList(folder.path() / name, reader); };
    writeFile(folder.path() / "good", xmlOf("<true/>"));
    writeFile(folder.path() / "large", std::string(PropertyListLimits::bytes + 1, ' '));
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(read("good"));
    EXPECT_EQ(read("large").error(), Error::tooLarge);
    EXPECT_EQ(read("missing").error(), Error::unreadable);
    EXPECT_EQ(read("").error(), Error::unreadable);
    EXPECT_EQ(read("pipe").error(), Error::unreadable);
}

}  // namespace
}  // namespace velko
