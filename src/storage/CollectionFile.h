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

    std::optional<std::uint64_t> changes() const override { return m_collection.changes(); }

protected:
    virtual std::unique_ptr<R> make() const = 0;
    /// A kind's own rules on reading: the record stands in the collection and has the values, which what was stored has no more.
    virtual void added(R&, const StoredRecord<R>&) { }
    /// The same for a record that got the values of an earlier state; what it had in nested arrays goes.
    virtual void replaced(R& record, const StoredRecord<R>& stored) { added(record, stored); }
    /// What the kind keeps in nested arrays.
    virtual typename R::Nested nestedOf(const R&) const { return {}; }

    Collection<R>& collection() const { return m_collection; }

    void collect(StoredRecords<R>& records) const override
    {
        const std::vector<dataObject*>& all = m_collection.records();
        records.reserve(all.size());
        const auto recordAt = [&](std::size_t n) { return static_cast<const R*>(all[n]); };
        // The records lie all over the memory: while one is taken, the processor already fetches those that follow.
        for (std::size_t n = 0; n < all.size(); ++n) {
            if (n + 2 * fetchedAhead < all.size())
                __builtin_prefetch(recordAt(n + 2 * fetchedAhead));
            if (n + fetchedAhead < all.size())
                recordAt(n + fetchedAhead)->sharedValues().fetch();
            const R& record = *recordAt(n);
            StoredRecord<R>& stored = records.emplace_back();
            stored.id = record.getID();
            stored.values = record.sharedValues();
            stored.nested = nestedOf(record);
            stored.unknownKeys = record.unknownKeys();
        }
    }

private:
    void expect(std::size_t records) override { m_collection.makeRoom(records); }

    bool adopt(StoredRecord<R>&& stored, const TextStorePointer& store) override
    {
        std::unique_ptr<R> record = make();
        record->setID(stored.id);
        record->setValues(std::move(stored.values), store);
        record->setUnknownKeys(stored.unknownKeys);
        R& listed = m_collection.add(std::move(record));
        added(listed, stored);
        return listed.getID() == stored.id;
    }

    void bringBack(StoredRecord<R>&& stored, const TextStorePointer& store) override
    {
        R* const present = presentItem(m_collection, stored.id);
        if (!present) {
            adopt(std::move(stored), store);
            return;
        }
        present->setValues(std::move(stored.values), store);
        present->setUnknownKeys(stored.unknownKeys);
        replaced(*present, stored);
        m_collection.noteChange(*present);
    }

    static constexpr std::size_t fetchedAhead = 8;

    Collection<R>& m_collection;
};
