#pragma once

#include <string>

#include <corvane/dfx/ISchema.h>

namespace dfx {

/// Schema 129: what a run is about. The library keeps the texts and gives none of them a meaning.
///
/// A getter's text is valid until the field changes or the object ends. A setter keeps a copy of
/// the zero-terminated text; null counts as empty.
class CORVANE_EXPORT SCInfo : public ISchema {
public:
    /// The number of this schema.
    static constexpr short kType = 129;

    SCInfo();
    SCInfo(const SCInfo&) = default;
    SCInfo& operator=(const SCInfo&) = default;
    ~SCInfo() override;

    short type() const override;

    ///@{
    /// Path of the part, path of the rule file, and folder of the results.
    const char16_t* getPartFile() const;
    void setPartFile(const char16_t* text);
    const char16_t* getRuleFile() const;
    void setRuleFile(const char16_t* text);
    const char16_t* getResultFolder() const;
    void setResultFolder(const char16_t* text);
    ///@}
    ///@{
    /// "DocumentUnit" until it is set; the other texts are empty until then.
    const char16_t* getDrillDatabaseUnit() const;
    void setDrillDatabaseUnit(const char16_t* text);
    ///@}

private:
    std::u16string partFile_;
    std::u16string ruleFile_;
    std::u16string resultFolder_;
    std::u16string drillDatabaseUnit_;
};

}  // namespace dfx
