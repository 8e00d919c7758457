#include "gui/QtDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

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

}  // namespace hipico
