#pragma once

#include <cmath>
#include <cstdio>

#include "corvane/part/Part.h"

#include "Fuzz.h"

namespace fuzz {

/// What the analyses of a part find, as a text that two runs share, with what always holds of it
/// required on the way.
class Findings {
public:
    explicit Findings(const corvane::part::Part& part) : part_(part), model_(part.model()) {}
    const std::string& tell();

private:
    using Vector = corvane::part::Vector;

    void number(double value) {
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.17g ", value);
        text_ += digits;
    }
    /// A length, an angle, an area: never below 0.
    void size(double value, const char* promise) {
        require(std::isfinite(value) && value >= 0.0 && value < 1e299, promise);
        number(value);
    }
    void positive(double value, const char* promise) {
        require(value > 0.0, promise);
        size(value, promise);
    }
    /// One that may be to something that is not there.
    void distance(double value, const char* promise) {
        if (value == corvane::part::kNone)
            text_ += "none ";
        else
            size(value, promise);
    }
    void upTo(double value, double most, const char* promise) {
        require(value <= most + 1e-6, promise);
        size(value, promise);
    }
    /// Degrees.
    void angle(double value, double most, const char* promise) { upTo(value, most, promise); }
    void place(const Vector& point) {
        for (const double value : {point.x, point.y, point.z}) {
            require(std::isfinite(value), "a place is finite");
            number(value);
        }
    }
    /// A unit vector, or none where there may be none.
    void direction(const Vector& way, bool always) {
        const double length = std::hypot(way.x, way.y, way.z);
        require(std::abs(length - 1.0) < 1e-6 || (!always && length == 0.0), "a direction is unit");
        place(way);
    }
    void face(int number, bool always) {
        require(number >= (always ? 1 : 0) && number <= static_cast<int>(model_.faces.size()),
                "a face is one of the part");
        text_ += std::to_string(number) + ' ';
    }
    void faces(const std::vector<int>& all, bool rising = true) {
        require(!all.empty(), "what is found has faces");
        for (std::size_t i = 0; i < all.size(); ++i) {
            face(all[i], true);
            require(!rising || i == 0 || all[i - 1] < all[i], "faces are in rising order");
        }
    }
    /// A number of one in a list, or 0.
    void among(int number, std::size_t count) {
        require(number >= 0 && static_cast<std::size_t>(number) <= count,
                "what is referred to is there");
        text_ += std::to_string(number) + ' ';
    }
    /// Something that a part is, or else the reason why it is not.
    bool isOr(bool is, const std::string& reason, const char* promise) {
        require(is == reason.empty(), promise);
        text_ += reason;
        return is;
    }
    void flag(bool value) { text_ += value ? "yes " : "no "; }
    void title(const char* title) { text_ += std::string("\n") + title + ' '; }

    void whole();
    void holes();
    void hole(const corvane::part::Hole& hole);
    void sections(const corvane::part::Hole& hole);
    void patterns();
    void corners();
    void pockets();
    void turned();
    void sheet();
    void thickness(const corvane::part::Thickness& place);
    void places(const std::vector<corvane::part::Thickness>& places, const char* title);
    void walls();
    void draft();
    void overhangs();

    const corvane::part::Part& part_;
    const corvane::part::Model& model_;
    std::string text_;
};

}  // namespace fuzz
