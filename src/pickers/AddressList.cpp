#include "pickers/AddressList.h"

AddressList::AddressList(QWidget* parent) : GridView(parent) {
    model_ = new RowModel<ZipAddress>({{QStringLiteral("郵便番号"),
                                        [](const ZipAddress& a) {
                                            return a.zip;
                                        }},
                                       {QStringLiteral("都道府県"),
                                        [](const ZipAddress& a) {
                                            return a.todo;
                                        }},
                                       {QStringLiteral("市町村郡"),
                                        [](const ZipAddress& a) {
                                            return a.city;
                                        }},
                                       {QStringLiteral("町"),
                                        [](const ZipAddress& a) {
                                            return a.town;
                                        }}},
                                      this);
    setModel(model_);
    setColumnWidths({90, 100, 180, 260});
    setLastColumnStretch(true);
}
