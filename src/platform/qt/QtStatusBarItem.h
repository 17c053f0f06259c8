#pragma once

#include "platform/StatusBar.h"
#include "platform/qt/DBusMenuExporter.h"
#include "platform/qt/QtStatusBar.h"
#include "platform/qt/StatusNotifierItem.h"
#include "platform/qt/TrayIconContents.h"

#include <QDBusConnection>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

/// A connection that closes with its owner. Copies of it must be gone by then.
class OwnConnection {
  public:
    explicit OwnConnection(QDBusConnection bus) : bus_(std::move(bus)) {}
    OwnConnection(const OwnConnection&) = delete;
    OwnConnection& operator=(const OwnConnection&) = delete;
    ~OwnConnection();

    [[nodiscard]] const QDBusConnection& bus() const { return bus_; }

  private:
    QDBusConnection bus_;
};

/// One status item of a panel: keeps it registered and what it shows up to date, at most once in each pass of
/// the event loop. Main thread.
class QtStatusBarItem final : public QObject, public StatusBarItem {
    Q_OBJECT

  public:
    /// The bar must outlive the item.
    explicit QtStatusBarItem(const QtStatusBar& bar);
    ~QtStatusBarItem() override;

    void setTitle(const std::string& title) override;
    /// Of the attributes the font's size counts, where the title is drawn by this program.
    void setAttributedTitle(const AttributedString& title) override;
    void setImage(const std::optional<Image>& image) override;
    void setMenu(std::string_view name) override;
    /// Panels highlight as they like.
    void setHighlightMode(bool isHighlighted) override;

  Q_SIGNALS:
    void activated(const QString& activationToken);

  private:
    /// What panels see: gone for them when its connection closes.
    struct Presence {
        explicit Presence(const QtStatusBar& bar);

        OwnConnection connection;
        DBusMenuExporter menu;
        StatusNotifierItem item;
        bool isRegistered = false;
    };

    void show(const std::string& title, double digitScale);
    void appear();
    void registerAtWatcher();
    void refreshSoon();
    void refresh();
    [[nodiscard]] StatusNotifierState composedState() const;
    [[nodiscard]] DrawnPixmaps pixmapsOfImage() const;
    void popUpMenu(QPoint position) const;

    const QtStatusBar& bar_;
    std::unique_ptr<Presence> presence_;
    QPointer<QMenu> menu_;
    QString title_;
    std::optional<Image> image_;
    /// Height of drawn digits compared with the largest ones.
    double digitScale_ = 1.0;
    bool isRefreshPending_ = false;
};

}  // namespace calorivo
