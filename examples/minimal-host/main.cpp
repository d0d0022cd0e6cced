#include <QApplication>
#include <QDebug>
#include <QUrl>
#include <QWidget>
#include <tessara/api/Tessara.h>

// The SDK lays its screens over the delegate, so the delegate is a widget: here the window.
class HostWindow : public QWidget, public tessara::TSRDelegate {
public:
    void closedFormOnStepWithId(const QString& directionId) override {
        qInfo() << "closed on step" << directionId;
        QApplication::quit();
    }
};

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QUrl backend(argc > 1 ? argv[1] : "http://127.0.0.1:8080");

    HostWindow window;
    window.resize(400, 800);
    window.show();

    auto look = std::make_shared<tessara::TSRAppearance>();
    look->setTintColor(QColor("#0f6b5c"));
    tessara::Tessara sdk(backend, look);

    sdk.startProcess("credit-request", std::nullopt, &window, [](tessara::TSRResult<bool> result) {
        // On the main thread, after startProcess has returned.
        if (result.isSuccess()) {
            qInfo() << "process started";
        } else {
            qWarning() << "start failed:" << tessara::errorDescription(result.error());
            QApplication::exit(1);
        }
    });
    return app.exec();
}
