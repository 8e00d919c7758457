#include "core/Dialogs.h"

#include <QStringList>
#include <stdexcept>

namespace hipico {

void ScriptedDialogs::message(Icon icon, const QString& title, const QString& text) {
    shown_.append({Kind::Message, icon, title, text});
}

void ScriptedDialogs::notify(Icon icon, const QString& title, const QString& text) {
    shown_.append({Kind::Notice, icon, title, text});
}

bool ScriptedDialogs::confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) {
    shown_.append({Kind::Confirm, icon, title, text, noByDefault});
    if (answers_.empty() || !std::holds_alternative<bool>(answers_.front()))
        throw std::logic_error("sin respuesta preparada para la pregunta: " + text.toStdString());
    const bool answer = std::get<bool>(answers_.front());
    answers_.pop_front();
    return answer;
}

std::optional<QString> ScriptedDialogs::ask(const QString& title, const QString& prompt, const QString&) {
    shown_.append({Kind::Ask, Icon::None, title, prompt});
    if (answers_.empty() || !std::holds_alternative<std::optional<QString>>(answers_.front()))
        throw std::logic_error("sin respuesta preparada para la entrada: " + prompt.toStdString());
    auto answer = std::get<std::optional<QString>>(answers_.front());
    answers_.pop_front();
    return answer;
}

const ScriptedDialogs::Box& ScriptedDialogs::last() const {
    if (shown_.isEmpty()) throw std::logic_error("no se mostró ningún mensaje");
    return shown_.last();
}

QStringList ScriptedDialogs::texts() const {
    QStringList out;
    for (const Box& b : shown_) out << b.text;
    return out;
}

}  // namespace hipico
