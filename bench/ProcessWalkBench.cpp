// Finding the daemon by name in the process list: allocations per step of the walk (goal: none)
// and the time of a whole walk, next to pgrep doing the same (bench/process-walk.sh runs both
// as whole processes).
//   vexto_process_walk_bench [benchmark options]   the walk in this process
//   vexto_process_walk_bench --find NAME           one walk, as pgrep -x NAME does; exit 0 when
//                                                  found, 1 otherwise
#include "platform/linux/ProcProcessList.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"
#include "system/QLVXProcessesEnumerator.hpp"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<long> allocations{0};

} // namespace

// Every allocation of the program is counted; the memory itself comes from malloc, so GCC's
// check that operator new's memory is not freed with free() does not apply here.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

using vexto::QLVXProcess;
using vexto::QLVXProcessesEnumerator;

// Every step of a walk that names each process, as firstProcessNamed does.
void walkNamingEveryProcess(benchmark::State& state)
{
    vexto::ProcProcessList list;
    vexto::ProcessPlatform::install(&list, &list, nullptr);
    long steps = 0;
    long allocated = 0;
    for (auto _ : state) {
        QLVXProcessesEnumerator enumerator;
        const long before = allocations.load();
        while (QLVXProcess* process = enumerator.nextObject()) {
            benchmark::DoNotOptimize(process->name());
            ++steps;
        }
        allocated += allocations.load() - before;
    }
    state.counters["processes"] = static_cast<double>(steps) / state.iterations();
    state.counters["allocations/step"] = static_cast<double>(allocated) / steps;
    vexto::ProcessPlatform::uninstall();
}
BENCHMARK(walkNamingEveryProcess)->Unit(benchmark::kMicrosecond);

void firstProcessNamedMissing(benchmark::State& state)
{
    vexto::ProcProcessList list;
    vexto::ProcessPlatform::install(&list, &list, nullptr);
    for (auto _ : state) {
        benchmark::DoNotOptimize(QLVXProcess::firstProcessNamed("vextodaemon"));
    }
    vexto::ProcessPlatform::uninstall();
}
BENCHMARK(firstProcessNamedMissing)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--find") == 0) {
        vexto::ProcProcessList list;
        vexto::ProcessPlatform::install(&list, &list, nullptr);
        return QLVXProcess::firstProcessNamed(argv[2]) != nullptr ? 0 : 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
