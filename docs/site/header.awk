# A public header as Doxygen reads it, line for line: the file is documented, so that its free functions are, and so is
# what has no words because the compiler makes or refuses it.
NR == 1 { printf "/** @file */ " }
{
    words = before || /\/\/\/</
    before = /^ *\/\/\//
    if (!words && /[)] *(const *)?(noexcept *)?= delete;$/) $0 = $0 " ///< Not offered."
    else if (!words && /[)] *(const *)?(noexcept *)?= default;$/) $0 = $0 " ///< Member by member."
    else if (!words && /^ *(virtual )?~[A-Za-z]+\(\)( override)?;$/) $0 = $0 " ///< Releases what it holds."
    print
}
