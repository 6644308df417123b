#include "platform/db/RecordSet.h"

#include "platform/Failure.h"

#include <QSqlQuery>
#include <QSqlRecord>

RecordSet::RecordSet() = default;

RecordSet::RecordSet(std::unique_ptr<QSqlQuery> query) : query_(std::move(query)) {
    const QSqlRecord record = query_->record();
    for (int i = 0; i < record.count(); ++i) {
        names_ << record.fieldName(i);
        // The first of two columns with one name is the one a name finds, written as the
        // statement wrote it or in any other case.
        if (!exactPositions_.contains(names_.last()))
            exactPositions_.insert(names_.last(), i);
        const QString key = names_.last().toLower();
        if (!positions_.contains(key))
            positions_.insert(key, i);
    }
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
    names_.clear();
    exactPositions_.clear();
    positions_.clear();
    eof_ = true;
}

int RecordSet::fieldCount() const {
    return int(names_.size());
}

QString RecordSet::fieldName(int position) const {
    if (position < 0 || position >= fieldCount())
        throw Failure(ErrorNumber::NoSuchField,
                      QStringLiteral("フィールド %1 はありません。").arg(position));
    return names_[position];
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
    // Asked for every row of a long list: a name is folded the first time only (the server
    // gives its names in lower case), then found as written.
    if (const auto known = exactPositions_.constFind(name); known != exactPositions_.cend())
        return *known;
    const int position = positions_.value(name.toLower(), -1);
    if (position < 0)
        throw Failure(ErrorNumber::NoSuchField,
                      QStringLiteral("フィールド %1 はありません。").arg(name));
    exactPositions_.insert(name, position);
    return position;
}

void RecordSet::requireRow() const {
    if (eof_)
        throw Failure(ErrorNumber::NoCurrentRow, QStringLiteral("現在のレコードがありません。"));
}
