// vexto-plist: checks, shows and converts the pane's property-list files.
#include "PlistConverter.hpp"
#include "PlistPrinter.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

using namespace vexto;

namespace {

constexpr int success = 0;
constexpr int badInput = 1;
constexpr int badUsage = 2;

constexpr const char* usageText =
    "usage: vexto-plist lint FILE\n"
    "       vexto-plist print FILE\n"
    "       vexto-plist convert xml|binary FILE -o OUT   (OUT may be - for standard output)\n"
    "       vexto-plist --help | --version\n";

int usage(const std::string& problem)
{
    std::fprintf(stderr, "vexto-plist: %s\n%s", problem.c_str(), usageText);
    return badUsage;
}

int help()
{
    std::fputs(usageText, stdout);
    std::fputs("\n"
               "Checks, shows and converts Vexto's property lists (settings, layouts, defaults).\n"
               "  lint     says FILE: OK, or why the file cannot be used\n"
               "  print    one entry a line, keys in order; archived colours decoded\n"
               "  convert  writes the list as XML or binary, atomically\n"
               "Exit status: 0 done, 1 the input cannot be used or the output written, 2 a bad\n"
               "command line.\n",
               stdout);
    return success;
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
    errno = 0;
    if (!FileSystem::writeFileAtomically(output, *bytes)) {
        std::fprintf(stderr, "%s: cannot be written (%s)\n", output.c_str(),
                     errno != 0 ? std::strerror(errno) : "unknown error");
        return badInput;
    }
    return success;
}

// The command a well-formed line asks for, or a message saying what is wrong with it.
int run(const std::vector<std::string>& args)
{
    if (args.empty()) {
        return usage("no command given");
    }
    const std::string& command = args[0];
    if (command == "--help" || command == "-h") {
        return help();
    }
    if (command == "--version") {
        std::printf("vexto-plist %s\n", VEXTO_VERSION_TEXT);
        return success;
    }
    if (command == "lint" || command == "print") {
        if (args.size() != 2) {
            return usage(command + " takes one FILE");
        }
        return command == "lint" ? lint(args[1]) : print(args[1]);
    }
    if (command == "convert") {
        if (args.size() < 2 || (args[1] != "xml" && args[1] != "binary")) {
            return usage("convert needs a format, xml or binary" +
                         (args.size() < 2 ? std::string() : ", not \"" + args[1] + "\""));
        }
        if (args.size() != 5 || args[3] != "-o") {
            return usage("convert takes FORMAT FILE -o OUT");
        }
        return convert(args[1], args[2], args[4]);
    }
    return usage("unknown command \"" + command + "\"");
}

} // namespace

int main(int argc, char** argv)
{
    return run(std::vector<std::string>(argv + 1, argv + argc));
}
