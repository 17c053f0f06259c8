#pragma once

#include "monitor/Fans.h"
#include "output/PopUpButton.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"
#include "sensors/SmartInfo.h"

namespace calorivo {

/// Fills the menus from which the user picks what the menu bar shows. Stored indexes are positions in these
/// menus. Main thread.
class SensorPopups {
  public:
    /// All must outlive this object.
    SensorPopups(const SensorLists& lists, const SensorNaming& naming, const SmartInfo& smartInfo,
                 const Fans& fans, const MenuBarPopUps& popUps)
        : lists_(lists), naming_(naming), smartInfo_(smartInfo), fans_(fans), popUps_(popUps) {}

    /// Builds all three menus anew; nothing unless all three are there. What is selected is not touched.
    void fillInSensorPopups();

    void addSensorArrayToPopup(const KeyList& sensors, PopUpButton& popup);
    /// Nothing for an empty list.
    void addSensorArrayToPopupWithSeparator(const KeyList& sensors, PopUpButton& popup, bool withSeparator);
    void addSensorToPopup(SensorKey key, PopUpButton& popup);

  private:
    void fillTemperatures(PopUpButton& popup);
    void addDrives(PopUpButton& popup);
    void fillFans(PopUpButton& popup);

    const SensorLists& lists_;
    const SensorNaming& naming_;
    const SmartInfo& smartInfo_;
    const Fans& fans_;
    MenuBarPopUps popUps_;
};

}  // namespace calorivo
