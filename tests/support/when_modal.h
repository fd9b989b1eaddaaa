#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace keelview {

/// Acts as soon as the modal form of that name is open: in the middle of the call that opened it.
inline void WhenModal(const char* name, std::function<void()> act) {
    QTimer::singleShot(5, qApp, [name, act = std::move(act)] {
        const QWidget* form = QApplication::activeModalWidget();
        if (form != nullptr && form->objectName() == name)
            act();
        else
            WhenModal(name, act);
    });
}

}  // namespace keelview
