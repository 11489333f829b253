#pragma once

#include <cstdint>
#include <string>

namespace vexto {

// The daemon's log file: bounded however long the daemon runs (past its size it starts again,
// the previous file kept as "<name>.old"), written only to the file itself (never through a link
// planted in its place), and without floods: a line said again and again is written once, then
// "last line repeated N times" when another line comes or the log closes.
class DaemonLog {
public:
    static constexpr std::uint64_t longestFile = 1024 * 1024;

    explicit DaemonLog(std::string path, std::uint64_t longest = longestFile);
    ~DaemonLog();
    DaemonLog(const DaemonLog&) = delete;
    DaemonLog& operator=(const DaemonLog&) = delete;

    void write(const std::string& line);

private:
    void writeRaw(const std::string& line);
    void flushRepeats();
    bool open();

    std::string path_;
    std::uint64_t longest_;
    int fd_ = -1;
    std::string lastLine_;
    std::uint64_t repeats_ = 0;
};

} // namespace vexto
