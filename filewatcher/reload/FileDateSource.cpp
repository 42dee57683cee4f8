#include "filewatcher/reload/FileDateSource.h"

#include "common/cmDateTime.h"
#include "txapi/txapi.h"

#include <atomic>
#include <utility>

namespace {

constexpr FileDateSource systemSource{&cmReadFileItem, &cmTickCount,
                                      [](cmThreadEvent& event, std::uint32_t timeoutMs) { return event.wait(timeoutMs); }};
std::atomic<const FileDateSource*> currentSource{&systemSource};

}  // namespace

const FileDateSource& fileDateSource()
{
    return *currentSource.load();
}

void setFileDateSource(const FileDateSource* source)
{
    currentSource = source ? source : &systemSource;
}

std::optional<FILE_DATE_THREAD_OUTPUT_INFO> readFileDate(cmStringT fileName)
{
    tamarin::TMString path(fileName);
    std::int32_t kind = txPathKind(path);
    if (kind == txPathRelative) {
        txAbsolute(tamarin::TMString(fileName), tamarin::TMString(""), 1, path);
        kind = txPathKind(path);
    }
    if (!txFileSupportsGetFileTime(path))
        return std::nullopt;
    const FileDateSource& source = fileDateSource();
    const std::uint32_t start = source.tickCount();
    const CMFD_ITEM item = source.readItem(path.getCMString());
    const std::uint32_t end = source.tickCount();
    FILE_DATE_THREAD_OUTPUT_INFO result;
    result.fileName = std::move(fileName);
    result.elapsedMs = end < start ? 0 : static_cast<std::int32_t>(end - start);  // the count wrapped around
    if (item.state == cmItemState::found)
        result.item = item;
    result.readOnlyFlag = kind != txPathLocal || (result.item.attributes & cmAttributeReadOnly) ? 1 : 0;
    return result;
}
