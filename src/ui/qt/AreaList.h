#pragma once

#include "platform/Property.h"

#include <QListWidget>

namespace calorivo {

class SourceList;

/// The areas at the left of the main window. Its selection and the source list's follow each other.
class AreaList final : public QListWidget {
    Q_OBJECT
  public:
    explicit AreaList(QWidget* parent = nullptr);

    /// Once. The source list must outlive this object.
    void observe(SourceList& sourceList);
    [[nodiscard]] QSize sizeHint() const override;

    /// The area's name in the user's language.
    [[nodiscard]] static QString displayName(const std::string& area);

  private:
    void showAreas();
    void showSelection();
    void takeSelection();

    SourceList* sourceList_ = nullptr;
    Observation areas_;
    Observation selection_;
    bool isShowing_ = false;
};

}  // namespace calorivo
