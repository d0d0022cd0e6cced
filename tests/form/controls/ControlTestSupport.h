#pragma once

// Shared pieces of the control tests: a screen stand-in that records what controls ask of
// it, a recorder of value announcements, and a guard that restores the global theme.

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/documents/FieldJSON.h"
#include "tessara/form/TSRFileUploader.h"
#include "tessara/form/TSRFlowFollower.h"
#include "tessara/form/TSRLinkFollower.h"
#include "tessara/form/TSRLinkOpener.h"
#include "tessara/form/TSRPopupOpener.h"
#include "tessara/platform/NotificationBus.h"

#include <QStringList>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

namespace tessara::test {

inline FieldJSON makeField(FieldType type, const QString& key, std::optional<QString> label = std::nullopt) {
    FieldJSON field;
    field.type = type;
    field.key = key;
    field.label = std::move(label);
    return field;
}

inline std::vector<FieldOption>
makeOptions(std::initializer_list<std::pair<const char*, const char*>> labelValue) {
    std::vector<FieldOption> options;
    qint64 id = 1;
    for (const auto& [label, value] : labelValue)
        options.push_back(
            FieldOption{id++, QString::fromUtf8(label), QString::fromUtf8(value), std::nullopt});
    return options;
}

// Builds a control the way the factory does: construct, set `field`, set up.
template <typename Control> Control* makeControl(const FieldJSON& field, QWidget* parent) {
    auto* control = new Control(parent);
    control->field = field;
    control->setup();
    return control;
}

template <typename Control> std::unique_ptr<Control> makeControl(const FieldJSON& field) {
    std::unique_ptr<Control> control(new Control());
    control->field = field;
    control->setup();
    return control;
}

// The screen side of the controls, recording every request.
class ScreenStub : public QWidget,
                   public TSRFlowFollower,
                   public TSRLinkFollower,
                   public TSRLinkOpener,
                   public TSRPopupOpener,
                   public TSRFileUploader {
public:
    struct Flow {
        QWidget* button;
        std::optional<QString> directionId;
        std::optional<QString> fromFlowFieldId;
    };
    std::vector<Flow> flows;
    std::vector<std::pair<std::optional<QString>, std::optional<QString>>> links;
    std::vector<QUrl> openedUrls;
    std::vector<FieldJSON> popups;
    QStringList pickers; // "photo" or "file", in order
    TSRUploadFileView* asked = nullptr;

    void followFlow(QWidget* button, const std::optional<QString>& directionId,
                    const std::optional<QString>& fromFlowFieldId) override {
        flows.push_back({button, directionId, fromFlowFieldId});
    }
    void followLink(const std::optional<QString>& directionId, const std::optional<QString>& key) override {
        links.emplace_back(directionId, key);
    }
    void openLink(const QUrl& url) override { openedUrls.push_back(url); }
    void openPopup(const FieldJSON& field) override { popups.push_back(field); }
    TSRUploadFileView* uploadFileView() const override { return asked; }
    void setUploadFileView(TSRUploadFileView* view) override { asked = view; }
    void openPhotoPicker() override { pickers << QStringLiteral("photo"); }
    void openFileBrowser() override { pickers << QStringLiteral("file"); }
};

// Records the values announced under one field key.
class AnnouncementRecorder : public QObject {
public:
    explicit AnnouncementRecorder(const QString& key) {
        NotificationBus::instance().subscribe(
            NotificationBus::frameworkName(key), this,
            [this](const QVariantMap& info) { values << info.value(QStringLiteral("value")).toString(); });
    }
    QStringList values;
};

// Gives a test a fresh default theme to change, and puts the previous one back at the end.
class ThemeGuard {
public:
    ThemeGuard()
        : saved_(sharedAppearance()) {
        setCurrentAppearance(std::make_shared<TSRAppearance>());
    }
    ~ThemeGuard() { setCurrentAppearance(saved_); }
    TSRAppearance& theme() { return currentAppearance(); }

private:
    std::shared_ptr<TSRAppearance> saved_;
};

} // namespace tessara::test
