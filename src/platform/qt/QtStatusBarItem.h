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

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// A connection that closes with its owner. Copies of it must be gone by then.
class OwnConnection {
  public:
    OwnConnection(const BusConnector& connector, const QString& name);
    OwnConnection(const OwnConnection&) = delete;
    OwnConnection& operator=(const OwnConnection&) = delete;
    OwnConnection(OwnConnection&& other) noexcept;
    OwnConnection& operator=(OwnConnection&&) = delete;
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
    QtStatusBarItem(const QtStatusBar& bar, OwnConnection connection);
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
    void show(const std::string& title, double digitScale);
    void refreshSoon();
    void refresh();
    [[nodiscard]] StatusNotifierState composedState() const;
    [[nodiscard]] IconPixmaps pixmapsOfImage() const;
    void registerAtWatcher();
    void popUpMenu(QPoint position) const;

    const QtStatusBar& bar_;
    OwnConnection connection_;
    DBusMenuExporter menuExporter_;
    StatusNotifierItem item_;
    QPointer<QMenu> menu_;
    QString title_;
    std::optional<Image> image_;
    /// Height of drawn digits compared with the largest ones.
    double digitScale_ = 1.0;
    bool isRefreshPending_ = false;
    bool isRegistered_ = false;
};

}  // namespace calorivo
