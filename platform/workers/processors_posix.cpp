// A container gives a program a share of processors that it sees whole.
#include <sched.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "workers/processors.h"

namespace brenvik {

namespace {

int ProcessorsOfTheProcess() {
    cpu_set_t set;
    CPU_ZERO(&set);
    return ::sched_getaffinity(0, sizeof set, &set) == 0 ? std::max(1, CPU_COUNT(&set)) : 1;
}

/// The microseconds of a period that the group may use, and the period; "max" is no bound.
int ProcessorsOfTheGroup(int all) {
    std::ifstream file("/sys/fs/cgroup/cpu.max");
    double quota = 0, period = 0;
    if (!(file >> quota >> period) || quota <= 0 || period <= 0) return all;
    return std::clamp(static_cast<int>(std::ceil(std::min(quota / period, double(all)))), 1, all);
}

}  // namespace

int ProcessorsToUse() { return ProcessorsOfTheGroup(ProcessorsOfTheProcess()); }

bool IsAloneInItsProcess() {
    std::error_code error;
    const std::filesystem::directory_iterator threads("/proc/self/task", error), end;
    return !error && std::distance(threads, end) == 1;
}

}  // namespace brenvik
