// Runs two commands as whole processes, alternating, and reports for each the median and the
// quartiles of the wall time and the largest peak resident memory.
//   vexto_process_compare [--status N] RUNS NAME-A COMMAND-A... -- NAME-B COMMAND-B...
// Each run must end with status N (0 unless given), as a search for nothing ends with 1.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

struct Contender {
    std::string name;
    std::vector<char*> argv;
    std::vector<double> milliseconds;
    long peakKilobytes = 0;
};

int expectedStatus = 0;

bool runOnce(Contender& contender)
{
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    const int spawned =
        ::posix_spawnp(&pid, contender.argv[0], &actions, nullptr, contender.argv.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        std::fprintf(stderr, "cannot start %s\n", contender.argv[0]);
        return false;
    }
    int status = 0;
    rusage usage{};
    ::wait4(pid, &status, 0, &usage);
    const auto end = std::chrono::steady_clock::now();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != expectedStatus) {
        std::fprintf(stderr, "%s failed\n", contender.name.c_str());
        return false;
    }
    contender.milliseconds.push_back(
        std::chrono::duration<double, std::milli>(end - start).count());
    contender.peakKilobytes = std::max(contender.peakKilobytes, usage.ru_maxrss);
    return true;
}

double quantile(std::vector<double> values, double q)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(q * static_cast<double>(values.size() - 1))];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 2 && std::string(argv[1]) == "--status") {
        expectedStatus = std::atoi(argv[2]);
        argv += 2;
        argc -= 2;
    }
    if (argc < 6) {
        std::fputs("usage: vexto_process_compare [--status N] RUNS NAME-A COMMAND... -- NAME-B "
                   "COMMAND...\n",
                   stderr);
        return 2;
    }
    const int runs = std::atoi(argv[1]);
    Contender contenders[2];
    int which = 0;
    contenders[0].name = argv[2];
    for (int i = 3; i < argc; ++i) {
        if (std::string(argv[i]) == "--" && which == 0 && i + 1 < argc) {
            which = 1;
            contenders[1].name = argv[++i];
            continue;
        }
        contenders[which].argv.push_back(argv[i]);
    }
    for (Contender& contender : contenders) {
        contender.argv.push_back(nullptr);
    }
    for (int run = 0; run < runs; ++run) {
        for (Contender& contender : contenders) {
            if (!runOnce(contender)) {
                return 1;
            }
        }
    }
    for (const Contender& contender : contenders) {
        std::printf("%-12s median %.2f ms (quartiles %.2f-%.2f), peak memory %.1f MiB\n",
                    contender.name.c_str(), quantile(contender.milliseconds, 0.5),
                    quantile(contender.milliseconds, 0.25), quantile(contender.milliseconds, 0.75),
                    static_cast<double>(contender.peakKilobytes) / 1024.0);
    }
    std::printf(
        "ratio of medians %s / %s: %.2f\n", contenders[0].name.c_str(), contenders[1].name.c_str(),
        quantile(contenders[0].milliseconds, 0.5) / quantile(contenders[1].milliseconds, 0.5));
    return 0;
}
