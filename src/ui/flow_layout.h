// Places its widgets in a row like words, and begins a new row where the width ends.
#pragma once

#include <QLayout>

#include <vector>

namespace karvo
{

class FlowLayout : public QLayout
{
    Q_OBJECT

public:
    explicit FlowLayout(QWidget* parent);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

private:
    // All rows are as high as this.
    int highestItem() const;

    // Returns the height; `place` is called for every item with its rectangle.
    template <typename Place>
    int flow(const QRect& area, Place place) const;

    std::vector<QLayoutItem*> items_; // owned
};

} // namespace karvo
