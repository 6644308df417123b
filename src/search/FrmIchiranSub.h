#pragma once

#include "domain/SearchConditions.h"
#include "platform/ui/Screen.h"

#include <memory>

class QPushButton;
struct Purchase;
template <class Row> class RowModel;
class GridView;
class MasterNames;
class xLabel;

// One listed customer's purchases that match the purchase conditions of the last search, with
// the number of visits and the sum of the sales.
class FrmIchiranSub : public Screen {
    Q_OBJECT
public:
    explicit FrmIchiranSub(QWidget* parent = nullptr);

    void setUser(qint64 customerNo) { user_ = customerNo; }
    void setConditions(const SearchConditions& conditions) { conditions_ = conditions; }

    void Form_Load();
    void SerchUriage(qint64 customerNo);
    bool CalUriageGaku(qint64 customerNo);

protected:
    void showEvent(QShowEvent* event) override;

private:
    GridView* spdData;
    xLabel* lblKaisu;
    xLabel* lblKinga;
    QPushButton* cmdEnd;
    qint64 user_ = 0;
    SearchConditions conditions_;
    RowModel<Purchase>* rows_;
    std::shared_ptr<MasterNames> masters_;
    bool loaded_ = false;
};
