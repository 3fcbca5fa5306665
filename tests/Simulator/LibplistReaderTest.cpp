#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "Simulator/Files/LibplistReader.h"
#include "VelkoCore/Import/Importers.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

const std::filesystem::path fixtures = VELKO_FIXTURES;
const std::vector<std::string> writers{"python-xml", "python-binary", "plistutil-xml", "plistutil-binary"};

PropertyList whole(std::int64_t number) {
    return {number};
}

PropertyList text(std::string characters) {
    return {std::move(characters)};
}

std::expected<PropertyList, PropertyListError> read(const std::string& file) {
    return readPropertyList(std::as_bytes(std::span{file}), LibplistReader{});
}

TEST(LibplistReader, ReadsEveryKindOfValueAsOthersWriteIt) {
    PropertyList::Data data;
    for (unsigned char byte = 0; byte < 32; ++byte) {
        data.push_back(std::byte{byte});
    }
    const Array innermost{whole(3), {Dictionary{}}};
    const PropertyList expected{Dictionary{
        {"yes", {true}},
        {"no", {false}},
        {"small", whole(7)},
        {"negative", whole(-5)},
        {"large", whole(std::int64_t{1} << 40U)},
        {"real", {12.5}},
        {"text", text("plain")},
        {"marked <up> & \"quoted\"", text("Größe, 時計, 🧹")},
        {"long", text(std::string(300, 'x'))},
        {"data", {data}},
        {"date", {parseDate("2026-03-01T09:30:00Z").value()}},
        {"list", {Array{whole(1), {Array{whole(2), {innermost}}}, {Array{}}}}},
        {"nested", {Dictionary{{"a", {Dictionary{{"b", {Dictionary{{"c", text("d")}}}}}}}}}},
    }};
    for (const std::string& writer : writers) {
        const auto list =
            readPropertyList(fixtures / "property-lists" / ("kinds-" + writer + ".plist"), LibplistReader{});
        ASSERT_TRUE(list) << writer;
        EXPECT_EQ(*list, expected) << writer;
    }
}

TEST(LibplistReader, KeepsTheSignAndTheSizeOfNumbers) {
    const std::vector<std::pair<std::string, PropertyList>> cases{
        {"<integer>-9223372036854775808</integer>", whole(std::numeric_limits<std::int64_t>::min())},
        {"<integer>9223372036854775807</integer>", whole(std::numeric_limits<std::int64_t>::max())},
        {"<integer>18446744073709551615</integer>", {18446744073709551615.0}},
        {"<real>-inf</real>", {-std::numeric_limits<double>::infinity()}},
        {"<real>1e308</real>", {1e308}},
    };
    for (const auto& [content, expected] : cases) {
        const auto list = read("<plist>" + content + "</plist>");
        ASSERT_TRUE(list) << content;
        EXPECT_EQ(*list, expected) << content;
    }
}

TEST(LibplistReader, SurvivesDamageAnywhere) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random{seed};
    for (const std::string& writer : writers) {
        std::string file = contentOf(fixtures / "property-lists" / ("kinds-" + writer + ".plist"));
        file.erase(file.find_last_not_of('\n') + 1);
        int read = 0;
        for (std::size_t place = 0; place < file.size(); ++place) {
            std::string damaged = file;
            damaged[place] = static_cast<char>(random() % 256);
            read += velko::read(damaged) ? 1 : 0;
            EXPECT_FALSE(velko::read(file.substr(0, place))) << writer << " cut off at " << place;
        }
        EXPECT_GT(read, 0) << writer;
    }
}

TEST(Importers, FindTheSettingsOfEachOrganiserInAHomeFolder) {
    const BundleIDs known{"com.b", "com.example.clock", "com.example.sync", "com.example.sync.menu"};
    const ImportedLayout bartender{"Bartender",
                                   {{"com.b", Section::tucked},
                                    {"com.example.clock", Section::buried},
                                    {"com.example.sync.menu", Section::tucked},
                                    {"com.rare", Section::buried},
                                    {"com.unknown", Section::tucked}},
                                   std::nullopt,
                                   std::nullopt,
                                   BundleID(Importers::bartenderDomains[0])};
    ImportedLayout setapp = bartender;
    setapp.organiser = Importers::bartenderDomains[1];
    const ImportedLayout ice{"Ice", {}, 13, true, BundleID(Importers::iceDomain)};
    const ImportedLayout vanilla{"Vanilla", {}, 10, std::nullopt, BundleID(Importers::vanillaDomain)};
    std::vector<std::pair<std::string, std::optional<ImportedLayout>>> homes{
        {"setapp", setapp},          {"first-source-wins", bartender},
        {"own-items-only", ice},     {"list-at-the-top", vanilla},
        {"damaged", vanilla},        {"nothing-known", std::nullopt},
        {"not there", std::nullopt},
    };
    for (const std::string& writer : writers) {
        homes.emplace_back("bartender-" + writer, bartender);
        homes.emplace_back("ice-" + writer, ice);
        homes.emplace_back("vanilla-" + writer, vanilla);
    }
    for (const auto& [home, expected] : homes) {
        const auto found = Importers::detect(
            {.knownBundleIDs = known, .directory = fixtures / "homes" / home, .reader = LibplistReader{}});
        EXPECT_EQ(found, expected) << home;
    }
}

}  // namespace
}  // namespace velko
