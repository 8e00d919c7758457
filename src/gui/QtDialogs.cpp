#include "gui/QtDialogs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QKeyEvent>
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

// While a box is new, the keys meant for it are dropped: they were typed
// before the user could see it.
class TeclasAdelantadas : public QObject {
public:
    explicit TeclasAdelantadas(QWidget* caja) : caja_(caja) {
        reloj_.start();
        qApp->installEventFilter(this);
    }
    ~TeclasAdelantadas() override { qApp->removeEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto t = event->type();
        if (t != QEvent::KeyPress && t != QEvent::KeyRelease && t != QEvent::ShortcutOverride) return false;
        if (reloj_.elapsed() >= QtDialogs::kTeclasIgnoradasMs) return false;
        auto* w = qobject_cast<QWidget*>(watched);
        return w && (w == caja_ || caja_->isAncestorOf(w));
    }

private:
    QWidget* caja_;
    QElapsedTimer reloj_;
};

template <class Caja>
int ejecutar(Caja& caja) {
    TeclasAdelantadas guarda(&caja);
    return caja.exec();
}

}  // namespace

QWidget* QtDialogs::owner() const { return parent_ ? parent_ : QApplication::activeWindow(); }

void QtDialogs::message(Icon icon, const QString& title, const QString& text) {
    QMessageBox box(qtIcon(icon), title, text, QMessageBox::Ok, owner());
    ejecutar(box);
}

bool QtDialogs::confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) {
    QMessageBox box(qtIcon(icon), title, text, QMessageBox::Yes | QMessageBox::No, owner());
    box.setDefaultButton(noByDefault ? QMessageBox::No : QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return ejecutar(box) == QMessageBox::Yes;
}

std::optional<QString> QtDialogs::ask(const QString& title, const QString& prompt, const QString& initial) {
    QInputDialog dialog(owner());
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(initial);
    if (ejecutar(dialog) != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

void QtDialogs::notify(Icon icon, const QString& title, const QString& text) {
    auto* box = new QMessageBox(qtIcon(icon), title, text, QMessageBox::Ok, owner());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_ShowWithoutActivating);
    box->setWindowModality(Qt::NonModal);
    box->show();
}

}  // namespace hipico
