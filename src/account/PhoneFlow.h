#pragma once

#include "account/CodeCountdown.h"

#include <QString>
#include <QVariantMap>

#include <optional>

/// Proving that a phone number is one's own, and what is done with the proof: number, code, password. The rules and
/// texts, without widgets.
namespace corvanta::account {

/// What the three pages are used for.
enum class FlowUse { Register, Recover, ChangePassword, Rebind };

/// What one use asks, sends and says. Texts are the source texts of translations (context "PhoneFlow").
struct FlowRules {
    const char* title;
    const char* numberHint;
    const char* numberEmpty;
    const char* codeHint;
    const char* codeNotRequested;
    const char* codeEmpty;
    const char* codeOver;
    const char* codeWrong;
    const char* passwordHint; ///< null: no password is asked for
    const char* passwordLabel;
    const char* repeatLabel;
    const char* success;
    const char* codeOperation;
    const char* submitOperation;
    bool asksRegion;
    /// The number has to be registered, or must not be; without a value nobody asks.
    std::optional<bool> wantsRegistered;
    const char* registrationRefused; ///< the text when it is the other way round
    bool offersSignIn;               ///< the success is a question whether to sign in now
};
const FlowRules& flowRules(FlowUse use);

/// A region that numbers come from.
struct Region {
    const char* name; ///< source text, context "PhoneFlow"
    const char* code; ///< dialling code
};
/// Those offered, the usual one first.
constexpr Region Regions[] = {{QT_TRANSLATE_NOOP("PhoneFlow", "中国大陆 +86"), "86"},
                              {QT_TRANSLATE_NOOP("PhoneFlow", "香港"), "852"},
                              {QT_TRANSLATE_NOOP("PhoneFlow", "澳门"), "853"},
                              {QT_TRANSLATE_NOOP("PhoneFlow", "台湾"), "886"},
                              {QT_TRANSLATE_NOOP("PhoneFlow", "美国"), "1"}};

constexpr int ShortestPassword = 8; ///< characters
constexpr int LongestPassword = 16;

/// Whether a text can be a phone number: 5 to 20 digits, with a plus before them or not.
bool isPhoneNumber(const QString& text);

/// One walk through the pages: the checks that come before anything is sent. A check's result is the text that the
/// user gets instead; nothing when all is well.
class PhoneFlow final {
public:
    explicit PhoneFlow(FlowUse use)
        : use_(use)
        , rules_(flowRules(use)) {}

    FlowUse use() const { return use_; }
    const FlowRules& rules() const { return rules_; }
    CodeCountdown& countdown() { return countdown_; }
    const CodeCountdown& countdown() const { return countdown_; }

    std::optional<QString> checkNumber(const QString& number) const;
    /// The service says whether the number is registered.
    std::optional<QString> checkRegistered(bool isRegistered) const;
    /// A code has been sent to this number; the countdown begins.
    void codeRequested(const QString& number);
    std::optional<QString> checkCode(const QString& number, const QString& code) const;
    std::optional<QString> checkPasswords(const QString& password, const QString& repeated) const;

    /// The text for a refusal of the code by the service; the use's own for codes that are wrong or too old.
    QString codeRefusal(const QString& errorCode, const QString& text) const;

    /// A text of the rules as the user reads it.
    static QString text(const char* source);

private:
    FlowUse use_;
    const FlowRules& rules_;
    CodeCountdown countdown_;
    QString codeNumber_; ///< the number that the last code was sent to
};

} // namespace corvanta::account
