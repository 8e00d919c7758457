#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <deque>
#include <optional>
#include <variant>

namespace hipico {

enum class Icon { None, Information, Warning, Critical, Question };

// The only way logic speaks to the user: message boxes, Yes/No questions and
// input boxes.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual void message(Icon icon, const QString& title, const QString& text) = 0;
    // Yes/No; true means Yes.
    virtual bool confirm(const QString& title, const QString& text, bool noByDefault = false,
                         Icon icon = Icon::Question) = 0;
    // An input box; nullopt when the user cancels.
    virtual std::optional<QString> ask(const QString& title, const QString& prompt, const QString& initial = {}) = 0;
    // A message that does not stop the program: it stays on screen while the
    // user goes on working (what background work has to say).
    virtual void notify(Icon icon, const QString& title, const QString& text) { message(icon, title, text); }

    void inform(const QString& title, const QString& text) { message(Icon::Information, title, text); }
    void refuse(const QString& title, const QString& text) { message(Icon::Critical, title, text); }
    void warn(const QString& title, const QString& text) { message(Icon::Warning, title, text); }
};

// For tests: answers from a queue and records every box shown. A question or
// input box with no scripted answer left (or of the wrong kind) throws.
class ScriptedDialogs : public Dialogs {
public:
    enum class Kind { Message, Confirm, Ask, Notice };
    struct Box {
        Kind kind;
        Icon icon;
        QString title;
        QString text;
        bool noByDefault = false;  // a question whose default answer is No
    };

    ScriptedDialogs& yes() { answers_.emplace_back(true); return *this; }
    ScriptedDialogs& no() { answers_.emplace_back(false); return *this; }
    ScriptedDialogs& type(const QString& text) { answers_.emplace_back(std::optional<QString>(text)); return *this; }
    ScriptedDialogs& cancel() { answers_.emplace_back(std::optional<QString>()); return *this; }

    void message(Icon icon, const QString& title, const QString& text) override;
    bool confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) override;
    std::optional<QString> ask(const QString& title, const QString& prompt, const QString& initial) override;
    void notify(Icon icon, const QString& title, const QString& text) override;

    const QVector<Box>& shown() const { return shown_; }
    int count() const { return static_cast<int>(shown_.size()); }
    const Box& last() const;
    QStringList texts() const;
    bool answersLeft() const { return !answers_.empty(); }
    void clear() { shown_.clear(); answers_.clear(); }

private:
    QVector<Box> shown_;
    std::deque<std::variant<bool, std::optional<QString>>> answers_;
};

}  // namespace hipico
