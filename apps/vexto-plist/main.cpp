// vexto-plist: checks, shows and converts the pane's property-list files.
#include "PlistConverter.hpp"
#include "PlistPrinter.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

using namespace vexto;

namespace {

constexpr int success = 0;
constexpr int badInput = 1;
constexpr int badUsage = 2;

int usage()
{
    std::fputs(
        "usage: vexto-plist lint FILE\n"
        "       vexto-plist print FILE\n"
        "       vexto-plist convert xml|binary FILE -o OUT   (OUT may be - for standard output)\n",
        stderr);
    return badUsage;
}

PropertyListCodec::ReadResult readOrComplain(const std::string& path)
{
    auto result = PropertyListCodec::readFile(path);
    if (!result.value) {
        std::fprintf(stderr, "%s: %s\n", path.c_str(), result.error.c_str());
    }
    return result;
}

int lint(const std::string& path)
{
    if (!readOrComplain(path).value) {
        return badInput;
    }
    std::printf("%s: OK\n", path.c_str());
    return success;
}

int print(const std::string& path)
{
    const auto result = readOrComplain(path);
    if (!result.value) {
        return badInput;
    }
    std::fputs(PlistPrinter::print(*result.value).c_str(), stdout);
    return success;
}

int convert(std::string_view format, const std::string& path, const std::string& output)
{
    const auto result = readOrComplain(path);
    if (!result.value) {
        return badInput;
    }
    const auto bytes =
        PlistConverter::convert(*result.value, format == "xml" ? PropertyListCodec::Format::Xml
                                                               : PropertyListCodec::Format::Binary);
    if (!bytes) {
        std::fprintf(stderr, "%s: cannot be written as %s\n", path.c_str(),
                     std::string(format).c_str());
        return badInput;
    }
    if (output == "-") {
        std::fwrite(bytes->data(), 1, bytes->size(), stdout);
        return success;
    }
    if (!FileSystem::writeFileAtomically(output, *bytes)) {
        std::fprintf(stderr, "%s: cannot be written\n", output.c_str());
        return badInput;
    }
    return success;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 2 && args[0] == "lint") {
        return lint(args[1]);
    }
    if (args.size() == 2 && args[0] == "print") {
        return print(args[1]);
    }
    if (args.size() == 5 && args[0] == "convert" && (args[1] == "xml" || args[1] == "binary") &&
        args[3] == "-o") {
        return convert(args[1], args[2], args[4]);
    }
    return usage();
}
