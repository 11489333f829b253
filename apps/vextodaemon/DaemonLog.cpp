#include "DaemonLog.hpp"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexto {

DaemonLog::DaemonLog(std::string path, std::uint64_t longest)
    : path_(std::move(path)), longest_(longest)
{}

DaemonLog::~DaemonLog()
{
    flushRepeats();
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

bool DaemonLog::open()
{
    if (fd_ < 0) {
        fd_ = ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    }
    return fd_ >= 0;
}

void DaemonLog::write(const std::string& line)
{
    if (line == lastLine_) {
        ++repeats_;
        return;
    }
    flushRepeats();
    lastLine_ = line;
    writeRaw(line);
}

void DaemonLog::flushRepeats()
{
    if (repeats_ == 0) {
        return;
    }
    const std::uint64_t repeats = repeats_;
    repeats_ = 0;
    writeRaw("last line repeated " + std::to_string(repeats) + " times");
}

void DaemonLog::writeRaw(const std::string& line)
{
    struct stat info {};
    if (open() && ::fstat(fd_, &info) == 0 &&
        static_cast<std::uint64_t>(info.st_size) + line.size() + 1 > longest_) {
        ::close(fd_);
        fd_ = -1;
        ::rename(path_.c_str(), (path_ + ".old").c_str());
    }
    if (!open()) {
        return;
    }
    const std::string text = line + "\n";
    const ssize_t written = ::write(fd_, text.data(), text.size());
    (void)written; // a log line that cannot be written is not worth a second one
}

} // namespace vexto
