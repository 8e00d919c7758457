#pragma once

#include "core/Dialogs.h"

class QWidget;

namespace hipico {

// Real boxes on screen (QMessageBox / QInputDialog), over the active window.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void message(Icon icon, const QString& title, const QString& text) override;
    bool confirm(const QString& title, const QString& text, bool noByDefault, Icon icon) override;
    std::optional<QString> ask(const QString& title, const QString& prompt, const QString& initial) override;

private:
    QWidget* owner() const;
    QWidget* parent_;
};

}  // namespace hipico
