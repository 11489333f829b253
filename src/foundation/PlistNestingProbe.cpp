#include "foundation/PlistNestingProbe.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

namespace vexto {

namespace {

class XmlScanner {
public:
    explicit XmlScanner(std::span<const std::uint8_t> bytes)
        : text_(reinterpret_cast<const char*>(bytes.data()), bytes.size())
    {}

    bool within(int maximumDepth)
    {
        int depth = 0;
        for (pos_ = text_.find('<'); pos_ != std::string_view::npos; pos_ = text_.find('<', pos_)) {
            if (skipped("<!--", "-->") || skipped("<![CDATA[", "]]>") || skipped("<?", "?>")) {
                continue;
            }
            if (startsWith("<!")) {
                skipDeclaration();
            } else if (startsWith("</")) {
                depth = depth > 0 ? depth - 1 : 0;
                pos_ += 2;
            } else if (!skipOpeningTagAndTellIfEmpty() && ++depth > maximumDepth) {
                return false;
            }
        }
        return true;
    }

private:
    bool startsWith(std::string_view prefix) const
    {
        return text_.substr(pos_).starts_with(prefix);
    }

    bool skipped(std::string_view opening, std::string_view closing)
    {
        if (!startsWith(opening)) {
            return false;
        }
        const auto end = text_.find(closing, pos_ + opening.size());
        pos_ = end == std::string_view::npos ? text_.size() : end + closing.size();
        return true;
    }

    void skipDeclaration()
    {
        int brackets = 0;
        for (++pos_; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            if (c == '[') {
                ++brackets;
            } else if (c == ']') {
                --brackets;
            } else if (c == '>' && brackets <= 0) {
                ++pos_;
                return;
            }
        }
    }

    // Moves past the tag; true when it closes itself ("<array/>").
    bool skipOpeningTagAndTellIfEmpty()
    {
        char quote = 0;
        for (++pos_; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            if (quote != 0) {
                quote = c == quote ? 0 : quote;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                const bool empty = text_[pos_ - 1] == '/';
                ++pos_;
                return empty;
            }
        }
        return false;
    }

    std::string_view text_;
    std::size_t pos_ = 0;
};

class BinaryWalker {
public:
    explicit BinaryWalker(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool within(int maximumDepth)
    {
        if (!readTrailer()) {
            return false;
        }
        return longestChainWithin(static_cast<std::size_t>(topObject_), maximumDepth);
    }

private:
    static constexpr std::size_t trailerSize = 32;
    enum class Visit : std::uint8_t { NotSeen, InProgress, Done };

    bool readBigEndian(std::size_t offset, std::size_t width, std::uint64_t& value) const
    {
        if (width == 0 || width > 8 || offset > bytes_.size() || bytes_.size() - offset < width) {
            return false;
        }
        value = 0;
        for (std::size_t i = 0; i < width; ++i) {
            value = (value << 8) | bytes_[offset + i];
        }
        return true;
    }

    bool readTrailer()
    {
        if (bytes_.size() < 8 + trailerSize) {
            return false;
        }
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = bytes_[trailer + 6];
        referenceSize_ = bytes_[trailer + 7];
        std::uint64_t tableOffset = 0;
        if (!readBigEndian(trailer + 8, 8, objectCount_) ||
            !readBigEndian(trailer + 16, 8, topObject_) ||
            !readBigEndian(trailer + 24, 8, tableOffset)) {
            return false;
        }
        if (offsetSize_ == 0 || offsetSize_ > 8 || referenceSize_ == 0 || referenceSize_ > 8 ||
            objectCount_ == 0 || topObject_ >= objectCount_ || tableOffset < 8 ||
            tableOffset > trailer || (trailer - tableOffset) / offsetSize_ < objectCount_) {
            return false;
        }
        tableOffset_ = static_cast<std::size_t>(tableOffset);
        visits_.assign(static_cast<std::size_t>(objectCount_), Visit::NotSeen);
        depths_.assign(static_cast<std::size_t>(objectCount_), 0);
        return true;
    }

    // The references a container holds; leaves have none. False when the object is malformed.
    bool children(std::size_t object, std::vector<std::size_t>& out) const
    {
        out.clear();
        std::uint64_t offset = 0;
        if (!readBigEndian(tableOffset_ + object * offsetSize_, offsetSize_, offset) ||
            offset >= tableOffset_) {
            return false;
        }
        std::size_t pos = static_cast<std::size_t>(offset);
        const std::uint8_t marker = bytes_[pos++];
        const unsigned kind = marker >> 4;
        if (kind != 0xA && kind != 0xC && kind != 0xD) {
            return true;
        }
        std::uint64_t count = marker & 0x0F;
        if (count == 0x0F) {
            if (pos >= bytes_.size() || (bytes_[pos] >> 4) != 0x1) {
                return false;
            }
            const std::size_t width = std::size_t{1} << (bytes_[pos] & 0x0F);
            if (!readBigEndian(pos + 1, width, count)) {
                return false;
            }
            pos += 1 + width;
        }
        const std::uint64_t references = kind == 0xD ? count * 2 : count;
        if (references > (tableOffset_ - pos) / referenceSize_) {
            return false;
        }
        for (std::uint64_t i = 0; i < references; ++i) {
            std::uint64_t child = 0;
            readBigEndian(pos + i * referenceSize_, referenceSize_, child);
            if (child >= objectCount_) {
                return false;
            }
            out.push_back(static_cast<std::size_t>(child));
        }
        return true;
    }

    // Depth-first walk with an explicit stack: the longest chain of containers, with cycles and
    // over-deep chains refused. Each object is expanded once.
    bool longestChainWithin(std::size_t root, int maximumDepth)
    {
        struct Frame {
            std::size_t object;
            std::vector<std::size_t> children;
            std::size_t next = 0;
            int deepest = 0;
        };
        std::vector<Frame> stack;
        const auto enter = [&](std::size_t object) {
            Frame frame{object, {}, 0, 0};
            if (!children(object, frame.children)) {
                return false;
            }
            visits_[object] = Visit::InProgress;
            stack.push_back(std::move(frame));
            return static_cast<int>(stack.size()) <= maximumDepth;
        };
        if (!enter(root)) {
            return false;
        }
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next == frame.children.size()) {
                const int depth = frame.deepest + 1;
                depths_[frame.object] = depth;
                visits_[frame.object] = Visit::Done;
                stack.pop_back();
                if (!stack.empty() && depth > stack.back().deepest) {
                    stack.back().deepest = depth;
                }
                continue;
            }
            const std::size_t child = frame.children[frame.next++];
            if (visits_[child] == Visit::InProgress) {
                return false;
            }
            if (visits_[child] == Visit::Done) {
                frame.deepest = std::max(frame.deepest, depths_[child]);
                if (static_cast<int>(stack.size()) + depths_[child] > maximumDepth) {
                    return false;
                }
                continue;
            }
            if (!enter(child)) {
                return false;
            }
        }
        return true;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t topObject_ = 0;
    std::size_t tableOffset_ = 0;
    std::vector<Visit> visits_;
    std::vector<int> depths_;
};

} // namespace

bool PlistNestingProbe::xmlWithin(std::span<const std::uint8_t> bytes, int maximumDepth)
{
    return XmlScanner(bytes).within(maximumDepth);
}

bool PlistNestingProbe::binaryWithin(std::span<const std::uint8_t> bytes, int maximumDepth)
{
    return BinaryWalker(bytes).within(maximumDepth);
}

} // namespace vexto
