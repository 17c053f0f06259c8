#pragma once

#include "platform/linux/GraphicsCards.h"
#include "platform/linux/GraphicsConnectors.h"

#include <mutex>
#include <string>
#include <vector>

namespace calorivo {

/// What the graphics processors of the machine are at.
struct GraphicsState {
    /// No discrete one is in use.
    bool isIntegratedInUse = true;
    /// The kernel puts a discrete one to sleep when nobody needs it.
    bool isSwitchedDynamically = false;
    /// The addresses of the discrete ones that are awake.
    std::vector<std::string> awake;
    /// The connectors with a display that is not built in.
    std::vector<std::string> displays;
    friend bool operator==(const GraphicsState&, const GraphicsState&) = default;
};

/// Finds out which graphics processor is in use, from files that wake none of them. Any thread.
///
/// The answer is the kernel's switch where its file may be read, which takes root. Otherwise: a discrete
/// processor whose power is managed is in use while it is awake. One that is always on is in use while it
/// drives the panel, if the panel can change over, that is if both have a connector for it.
class GraphicsReader {
  public:
    /// The root of sysfs; the switch's file is below it.
    explicit GraphicsReader(std::string sys) : sys_(std::move(sys)) {}

    [[nodiscard]] GraphicsState read();
    /// The graphics processors on PCI, looked for anew.
    [[nodiscard]] std::vector<GraphicsCard> findCards() const { return findGraphicsCards(sys_); }

  private:
    void updateCards(const GraphicsConnectors& found);
    void choosePanelOwner(const std::vector<GraphicsConnector>& connectors);
    [[nodiscard]] bool canPanelChangeOver(const std::vector<GraphicsConnector>& connectors) const;

    const std::string sys_;
    std::mutex mutex_;
    std::vector<GraphicsCard> cards_;
    /// The cards' names when `cards_` were found.
    std::vector<std::string> names_;
    bool isFound_ = false;
    /// The address of the one that drives the panel, or did before the panel went dark.
    std::string panelOwner_;
};

}  // namespace calorivo
