#pragma once

/// The platform's date: days since 30 December 1899 with the time of day as the fraction, and a
/// status (0 valid, 1 invalid, 2 null). The library copies it whole and converts nothing.
struct COleDateTime {
    /// What the number is worth.
    enum Status { valid = 0, invalid = 1, null = 2 };

    COleDateTime() = default;  ///< Day 0, valid.
    /// The two numbers as they are.
    explicit COleDateTime(double date, Status status = valid) : m_dt(date), m_status(status) {}

    double m_dt = 0.0;        ///< Days since 30 December 1899.
    Status m_status = valid;  ///< valid, invalid or null.

    friend bool operator==(const COleDateTime&, const COleDateTime&) = default;
};
