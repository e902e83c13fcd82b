// The record file of a collection: how stored records become the collection's records and back, once for all kinds.
#pragma once

#include "storage/RecordFileOf.h"
#include "storage/PresentItem.h"
#include "storage/qvDataSource.h"

template <class R>
class CollectionFile : public RecordFileOf<R> {
public:
    CollectionFile(Collection<R>& collection, const char* fileName, const char* collectionKey, const char* logName)
        : RecordFileOf<R>(fileName, collectionKey, logName)
        , m_collection(collection)
    {
    }

protected:
    virtual std::unique_ptr<R> make() const = 0;
    /// A kind's own rules on reading: the record has its values and stands in the collection.
    virtual void added(R&, const StoredRecord<R>&) { }
    /// The same for a record that got the values of an earlier state; what it had in nested arrays goes.
    virtual void replaced(R& record, const StoredRecord<R>& stored) { added(record, stored); }
    /// What the kind keeps in nested arrays.
    virtual typename R::Nested nestedOf(const R&) const { return {}; }

    Collection<R>& collection() const { return m_collection; }

private:
    void expect(std::size_t records) override { m_collection.makeRoom(records); }

    void adopt(StoredRecord<R>&& stored, const TextStorePointer& store) override
    {
        std::unique_ptr<R> record = make();
        record->setID(stored.id);
        record->setValues(stored.values, store);
        record->setUnknownKeys(stored.unknownKeys);
        added(m_collection.add(std::move(record)), stored);
    }

    void bringBack(StoredRecord<R>&& stored, const TextStorePointer& store) override
    {
        R* const present = presentItem(m_collection, stored.id);
        if (!present)
            return adopt(std::move(stored), store);
        present->setValues(stored.values, store);
        present->setUnknownKeys(stored.unknownKeys);
        replaced(*present, stored);
        m_collection.noteChange(*present);
    }

    void collect(std::vector<StoredRecord<R>>& records) const override
    {
        records.reserve(static_cast<std::size_t>(m_collection.getCount()));
        for (int n = 0; n < m_collection.getCount(); ++n) {
            const R& record = m_collection.at(n);
            records.push_back({record.getID(), {}, record.values(), nestedOf(record), record.unknownKeys()});
        }
    }

    Collection<R>& m_collection;
};
