#include "core/Dialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <stdexcept>

namespace hipico {

namespace {

QMessageBox::Icon qtIcon(Icon icon) {
    switch (icon) {
    case Icon::Information: return QMessageBox::Information;
    case Icon::Warning: return QMessageBox::Warning;
    case Icon::Critical: return QMessageBox::Critical;
    case Icon::Question: return QMessageBox::Question;
    case Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

QWidget* QtDialogs::owner() const { return parent_ ? parent_ : QApplication::activeWindow(); }

void QtDialogs::message(Icon icon, const QString& title, const QString& text) {
    QMessageBox box(qtIcon(icon), title, text, QMessageBox::Ok, owner());
    box.exec();
}

bool QtDialogs::confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) {
    QMessageBox box(qtIcon(icon), title, text, QMessageBox::Yes | QMessageBox::No, owner());
    box.button(QMessageBox::Yes)->setText(QStringLiteral("Sí"));
    box.setDefaultButton(noByDefault ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<QString> QtDialogs::ask(const QString& title, const QString& prompt, const QString& initial) {
    QInputDialog dialog(owner());
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(initial);
    dialog.setOkButtonText(QStringLiteral("Aceptar"));
    dialog.setCancelButtonText(QStringLiteral("Cancelar"));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

void ScriptedDialogs::message(Icon icon, const QString& title, const QString& text) {
    shown_.append({Kind::Message, icon, title, text});
}

bool ScriptedDialogs::confirm(const QString& title, const QString& text, bool, Icon icon) {
    shown_.append({Kind::Confirm, icon, title, text});
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
