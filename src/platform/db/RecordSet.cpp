#include "platform/db/RecordSet.h"

#include "platform/Failure.h"

#include <QSqlQuery>
#include <QSqlRecord>

RecordSet::RecordSet() = default;

RecordSet::RecordSet(std::unique_ptr<QSqlQuery> query) : query_(std::move(query)) {
    eof_ = !query_->next();
}

RecordSet::RecordSet(RecordSet&&) noexcept = default;
RecordSet& RecordSet::operator=(RecordSet&&) noexcept = default;

RecordSet::~RecordSet() {
    close();
}

bool RecordSet::eof() const {
    return eof_;
}

void RecordSet::moveNext() {
    requireRow();
    eof_ = !query_->next();
}

void RecordSet::close() {
    if (query_) {
        query_->finish();
        query_.reset();
    }
    eof_ = true;
}

int RecordSet::fieldCount() const {
    return query_ ? query_->record().count() : 0;
}

QString RecordSet::fieldName(int position) const {
    if (position < 0 || position >= fieldCount())
        throw Failure(ErrorNumber::NoSuchField,
                      QStringLiteral("フィールド %1 はありません。").arg(position));
    return query_->record().fieldName(position);
}

QVariant RecordSet::field(int position) const {
    requireRow();
    if (position < 0 || position >= fieldCount())
        throw Failure(ErrorNumber::NoSuchField,
                      QStringLiteral("フィールド %1 はありません。").arg(position));
    if (query_->isNull(position))
        return {};
    return query_->value(position);
}

QVariant RecordSet::field(const QString& name) const {
    return field(positionOf(name));
}

int RecordSet::positionOf(const QString& name) const {
    const int position = query_ ? query_->record().indexOf(name) : -1;
    if (position < 0)
        throw Failure(ErrorNumber::NoSuchField,
                      QStringLiteral("フィールド %1 はありません。").arg(name));
    return position;
}

void RecordSet::requireRow() const {
    if (eof_)
        throw Failure(ErrorNumber::NoCurrentRow, QStringLiteral("現在のレコードがありません。"));
}
