#include "ThreadText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace corvane::part::reading {
namespace {

constexpr double kInch = 25.4;
/// A thread's pitch is at most this share of its diameter, so `M6x20` is a screw and its length.
/// The coarsest are M1x0.25 (ISO 261) and Tr 8x2 (ISO 2904).
constexpr double kCoarsest = 0.25, kCoarsestTrapezoid = 0.35;

/// Sizes of pipe threads: their names in sixteenths of an inch, major diameters and turns per inch.
/// ISO 228-1:2000, table 1; those of ISO 7-1 are the same. ASME B1.20.1-2013, table 2: outside
/// diameters of pipes.
struct PipeSize {
    int sixteenths;
    double diameter, turns;
};
constexpr std::array<PipeSize, 15> kPipes{{{1, 7.723, 28},
                                           {2, 9.728, 28},
                                           {4, 13.157, 19},
                                           {6, 16.662, 19},
                                           {8, 20.955, 14},
                                           {10, 22.911, 14},
                                           {12, 26.441, 14},
                                           {14, 30.201, 14},
                                           {16, 33.249, 11},
                                           {20, 41.910, 11},
                                           {24, 47.803, 11},
                                           {32, 59.614, 11},
                                           {40, 75.184, 11},
                                           {48, 87.884, 11},
                                           {64, 113.030, 11}}};
constexpr std::array<PipeSize, 13> kTaperPipes{{{1, 0.3125 * kInch, 27},
                                                {2, 0.405 * kInch, 27},
                                                {4, 0.540 * kInch, 18},
                                                {6, 0.675 * kInch, 18},
                                                {8, 0.840 * kInch, 14},
                                                {12, 1.050 * kInch, 14},
                                                {16, 1.315 * kInch, 11.5},
                                                {20, 1.660 * kInch, 11.5},
                                                {24, 1.900 * kInch, 11.5},
                                                {32, 2.375 * kInch, 11.5},
                                                {40, 2.875 * kInch, 8},
                                                {48, 3.500 * kInch, 8},
                                                {64, 4.500 * kInch, 8}}};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

/// In capitals of ASCII, with one sign for each meaning.
std::string simplified(std::string_view text) {
    static constexpr std::pair<std::string_view, char> kSigns[]{
        {"\u00D7", 'X'}, {"\u2715", 'X'}, {"\u00A0", ' '}, {"\u202F", ' '},
        {"\u2010", '-'}, {"\u2011", '-'}, {"\u2012", '-'}, {"\u2013", '-'}};
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        for (const auto& [sign, plain] : kSigns)
            if (text.substr(i).starts_with(sign)) {
                c = plain;
                i += sign.size() - 1;
                break;
            }
        if (c == '*') c = 'X';
        if (c == ',') c = '.';
        out += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return out;
}

std::string plain(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    /// Looks at every place where a word or number begins.
    std::optional<Designation> find() {
        for (std::size_t start = 0; start < text_.size(); ++start) {
            const char before = start > 0 ? text_[start - 1] : ' ';
            const bool often = before == 'X' && start > 1 && isDigit(text_[start - 2]);  // 4xM6
            const bool begins = often || (!isDigit(before) && !isLetter(before) && before != '.' &&
                                          before != '/' && before != '_');
            if (!begins) continue;
            for (const auto form : {&Scanner::metric, &Scanner::trapezoid, &Scanner::unified,
                                    &Scanner::pipe, &Scanner::taperPipe}) {
                at_ = start;
                weak_ = false;
                Designation found;
                if (!(this->*form)(found)) continue;
                start_ = start;
                return found;
            }
        }
        return std::nullopt;
    }

    /// Whether what was found can mean other things too.
    [[nodiscard]] bool isWeak() const { return weak_; }
    /// Whether the text has nothing else but how often it is there and how deep: `4x M6 DEPTH 12`.
    [[nodiscard]] bool isWhole() const {
        static constexpr std::string_view kDepths[]{"DEPTH",   "DEEP",  "TIEF",   "THRU",
                                                    "THROUGH", "DURCH", "\u21A7", "\u25BC"};
        const std::string_view before = text_.substr(0, start_), after = text_.substr(at_);
        const std::size_t next = after.find_first_not_of(" .;");
        bool only = next == after.npos;
        for (const std::string_view depth : kDepths)
            only = only || after.substr(next).starts_with(depth);
        return only && before.find_first_not_of("0123456789X() -") == before.npos;
    }

private:
    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }
    void blanks() {
        while (peek() == ' ')
            ++at_;
    }
    bool take(std::string_view word) {
        if (!text_.substr(at_).starts_with(word)) return false;
        at_ += word.size();
        return true;
    }
    /// Nothing that belongs to a word follows.
    [[nodiscard]] bool ends() const {
        return !isDigit(peek()) && !isLetter(peek()) && peek() != '/' && peek() != '_' &&
               !(peek() == '.' && isDigit(peek(1)));
    }
    double number() {
        double value = 0.0;
        if (!isDigit(peek()) && !(peek() == '.' && isDigit(peek(1)))) return 0.0;
        const char* const end = text_.data() + text_.size();
        const auto [stop, error] =
            std::from_chars(text_.data() + at_, end, value, std::chars_format::fixed);
        if (error != std::errc() || !(value < 1e4)) return 0.0;
        at_ += static_cast<std::size_t>(stop - (text_.data() + at_));
        return value;
    }
    /// `1/4`, `1 1/4`, `1-1/4` or a plain number; how it is written in `written`.
    double inches(std::string& written) {
        const double whole = number();
        if (!(whole > 0.0)) return 0.0;
        written = plain(whole);
        const std::size_t back = at_;
        double above = whole, sum = 0.0;
        if (peek() == ' ' || peek() == '-') {
            ++at_;
            above = number();
            sum = whole;
        }
        if (above > 0.0 && take("/")) {
            const double below = number();
            if (below >= 2.0 && below <= 64.0 && above < below) {
                written = (sum > 0.0 ? plain(sum) + " " : "") + plain(above) + "/" + plain(below);
                return sum + above / below;
            }
        }
        at_ = back;
        return whole;
    }

    /// `6H`, `5H6H`, `4G`: of one of `letters`, written after a dash or a blank.
    void toleranceClass(std::string_view letters, std::string& out) {
        const std::size_t back = at_;
        blanks();
        take("-");
        blanks();
        std::string found;
        while (found.size() < 4 && peek() >= '1' && peek() <= '9' &&
               letters.find(peek(1)) != letters.npos && peek(1) != '\0') {
            found += peek();
            found += peek(1);
            at_ += 2;
        }
        if (found.empty() || !ends())
            at_ = back;
        else
            out += "-" + found;
    }
    void hand(std::string& out) {
        const std::size_t back = at_;
        blanks();
        take("-");
        blanks();
        if (take("LH") && ends())
            out += "-LH";
        else
            at_ = back;
    }

    /// The pitch after an `x`, or after a dash as `M8-1.25`.
    double pitchAfter(double diameter, double coarsest) {
        const std::size_t back = at_;
        blanks();
        const bool dash = !take("X") && take("-");
        if (at_ > back && text_[at_ - 1] != ' ') {
            blanks();
            take("P");
            const std::size_t first = at_;
            const double pitch = number();
            // After a dash a whole number counts what has one name.
            const bool plainNumber = text_.substr(first, at_ - first).find('.') == text_.npos;
            if (pitch >= 0.2 && pitch <= coarsest * diameter && ends() && !(dash && plainNumber))
                return pitch;
        }
        at_ = back;
        return 0.0;
    }

    bool metric(Designation& found) {
        if (!take("M")) return false;
        found.text = take("J") ? "MJ" : "M";
        if (peek() == ' ') ++at_;
        found.diameter = number();
        if (!(found.diameter >= 1.0 && found.diameter <= 600.0)) return false;
        found.text += plain(found.diameter);
        if (!ends() && peek() != 'X') return false;
        found.pitch = pitchAfter(found.diameter, kCoarsest);
        if (found.pitch > 0.0) found.text += "x" + plain(found.pitch);
        const std::size_t size = found.text.size();
        toleranceClass("EFGH", found.text);
        weak_ = found.pitch == 0.0 && found.text.size() == size;
        hand(found.text);
        return true;
    }

    bool trapezoid(Designation& found) {
        if (!take("TR")) return false;
        blanks();
        found.diameter = number();
        if (!(found.diameter >= 8.0 && found.diameter <= 300.0)) return false;
        found.pitch = pitchAfter(found.diameter, kCoarsestTrapezoid);
        if (found.pitch == 0.0) return false;
        found.text = "Tr" + plain(found.diameter) + "x" + plain(found.pitch);
        toleranceClass("CEH", found.text);
        hand(found.text);
        return true;
    }

    bool unified(Designation& found) {
        const bool numbered = take("#");
        std::string size;
        double inch = take("0-") ? (--at_, size = "0", 0.0) : inches(size);
        blanks();
        if (size.empty() || !take("-")) return false;
        blanks();
        const double turns = number();
        if (!(turns >= 3.0 && turns <= 100.0)) return false;
        blanks();
        // The machine screw sizes: 0.060 inches and 0.013 more for each number.
        const bool screw = numbered || turns >= (inch == 1.0 ? 56.0 : 24.0);
        if (screw && inch <= 12.0 && inch == std::floor(inch)) inch = 0.060 + 0.013 * inch;
        if (!(inch >= 0.05 && inch <= 6.0)) return false;
        std::string series;
        while (isLetter(peek()) && series.size() < 5)
            series += text_[at_++];
        static constexpr std::string_view kSeries[]{"UNC",  "UNF",  "UNEF", "UN",  "UNS", "UNJC",
                                                    "UNJF", "UNRC", "UNRF", "UNJ", "UNR"};
        bool known = false;
        for (const std::string_view one : kSeries)
            known = known || series == one;
        if (!known || !ends()) return false;
        found.text = (numbered ? "#" : "") + size + "-" + plain(turns) + " " + series;
        found.diameter = inch * kInch;
        found.pitch = kInch / turns;
        toleranceClass("AB", found.text);
        hand(found.text);
        return true;
    }

    template <std::size_t Count>
    static bool isPipe(const std::array<PipeSize, Count>& sizes, double inch, Designation& found) {
        for (const PipeSize& size : sizes) {
            if (std::abs(inch * 16.0 - size.sixteenths) > 1e-9) continue;
            found.diameter = size.diameter;
            found.pitch = kInch / size.turns;
            return true;
        }
        return false;
    }

    bool pipe(Designation& found) {
        static constexpr std::pair<std::string_view, std::string_view> kKinds[]{
            {"RP", "Rp"}, {"RC", "Rc"}, {"G", "G"}, {"R", "R"}};
        for (const auto& [sign, name] : kKinds) {
            if (!take(sign)) continue;
            if (peek() == ' ') ++at_;
            std::string size;
            const double inch = inches(size);
            if (size.find('.') != size.npos || !isPipe(kPipes, inch, found) || !ends())
                return false;
            found.text = std::string(name) + size;
            weak_ = name == "R" || size.find('/') == size.npos;
            return true;
        }
        return false;
    }

    bool taperPipe(Designation& found) {
        static constexpr std::string_view kKinds[]{"NPTF", "NPT", "NPSM", "NPSF"};
        const auto kind = [this]() -> std::string_view {
            for (const std::string_view one : kKinds)
                if (take(one)) return one;
            return {};
        };
        std::string_view name = kind();
        const bool before = !name.empty();
        blanks();
        std::string size;
        const double inch = inches(size);
        if (!isPipe(kTaperPipes, inch, found)) return false;
        if (!before) {
            blanks();
            if (take("-")) {
                blanks();
                if (!(number() > 0.0)) return false;
                blanks();
            }
            name = kind();
        }
        if (name.empty() || !ends()) return false;
        found.text = size + " " + std::string(name);
        return true;
    }

    std::string_view text_;
    std::size_t at_ = 0, start_ = 0;
    bool weak_ = false;
};

bool namesThreads(std::string_view text) {
    static constexpr std::string_view kWords[]{"THREAD",   "TAPPED", "GEWINDE",
                                               "FILETAGE", "TARAUD", "ROSCA"};
    for (const std::string_view word : kWords)
        if (text.find(word) != text.npos) return true;
    return false;
}

}  // namespace

std::optional<Designation> threadIn(std::string_view text, bool aboutThreads) {
    // Most texts of a file are names without a digit.
    if (text.find_first_of("0123456789") == text.npos) return std::nullopt;
    const std::string upper = simplified(text);
    Scanner scanner(upper);
    std::optional<Designation> found = scanner.find();
    if (found && scanner.isWeak() && !namesThreads(upper) && !(aboutThreads && scanner.isWhole()))
        return std::nullopt;
    return found;
}

}  // namespace corvane::part::reading
