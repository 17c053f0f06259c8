#include "platform/linux/DriveReaderPool.h"

#include <poll.h>

#include <algorithm>
#include <utility>

namespace calorivo {

/// One call of read().
struct DriveReaderPool::Round {
    std::span<const DriveRequest> requests;
    std::vector<DriveAnswer> answers;
    /// The requests that nobody works for yet, the next one last.
    std::vector<std::size_t> waiting;
    /// How many readers have been given one of these requests and are at it.
    std::size_t running = 0;

    [[nodiscard]] std::size_t placeOf(const std::string& identity) const {
        const auto found = std::ranges::find(requests, identity, &DriveRequest::identity);
        return found == requests.end() ? nowhere : static_cast<std::size_t>(found - requests.begin());
    }
};

std::vector<DriveAnswer> DriveReaderPool::read(std::span<const DriveRequest> requests) {
    noteSleep();
    std::vector<DriveAnswer> answers = readOnce(requests);
    return noteSleep() ? readOnce(requests) : answers;
}

bool DriveReaderPool::noteSleep() {
    if (!sleepWatch_.hasSlept()) return false;
    for (Reader& reader : readers_) reader.isOutdated = !reader.drive.empty();
    return true;
}

std::vector<DriveAnswer> DriveReaderPool::readOnce(std::span<const DriveRequest> requests) {
    const Clock::time_point until = Clock::now() + options_.patience;
    Round round{requests, std::vector<DriveAnswer>(requests.size()), {}};
    removeEnded();
    takeUpEarlierReadings(round);
    assign(round);
    while (round.running > 0 && Clock::now() < until) {
        wait(round, until);
        assign(round);
    }
    for (Reader& reader : readers_) {
        reader.place = nowhere;
        reader.isAwaited = false;
    }
    giveUpOverdue(round);
    return std::move(round.answers);
}

void DriveReaderPool::removeEnded() {
    std::erase_if(readers_, [](Reader& reader) { return reader.isKilled && reader.process.hasEnded(); });
}

/// What was late for the round before and has come since is the answer of this one: a drive that is always
/// slower than the patience is shown all the same.
void DriveReaderPool::takeUpEarlierReadings(Round& round) {
    std::vector<bool> isTakenUp(round.requests.size());
    for (Reader& reader : readers_) {
        if (reader.drive.empty()) continue;
        const std::size_t place = round.placeOf(reader.drive);
        if (place != nowhere) {
            isTakenUp[place] = true;
            if (reader.isKilled) round.answers[place].state = DriveAnswer::State::hung;
        }
        if (!reader.isKilled) reader.place = place;
    }
    wait(round, Clock::now());
    for (std::size_t place = round.requests.size(); place-- > 0;)
        if (!isTakenUp[place]) round.waiting.push_back(place);
}

void DriveReaderPool::assign(Round& round) {
    const auto isIdle = [](const Reader& reader) { return reader.drive.empty() && !reader.isKilled; };
    while (!round.waiting.empty() && round.running < options_.atOnce) {
        const std::size_t place = round.waiting.back();
        round.waiting.pop_back();
        const DriveRequest& request = round.requests[place];
        auto reader = std::ranges::find_if(readers_, isIdle);
        if (reader == readers_.end() || !assignTo(*reader, request, place)) {
            auto process = DriveReaderProcess::start(options_.command);
            if (process) readers_.push_back({.process = std::move(*process)});
            if (!process || !assignTo(readers_.back(), request, place)) {
                round.answers[place].state = DriveAnswer::State::failed;
                continue;
            }
        }
        ++round.running;
    }
}

bool DriveReaderPool::assignTo(Reader& reader, const DriveRequest& request, std::size_t place) {
    if (!reader.process.ask(request.name)) {
        reader.process.kill();
        reader.isKilled = true;
        return false;
    }
    reader.drive = request.identity;
    reader.since = Clock::now();
    reader.place = place;
    reader.isAwaited = true;
    return true;
}

/// Takes the answer that has come from a reader.
void DriveReaderPool::settle(Round& round, Reader& reader) {
    const auto reading = reader.process.receive();
    const bool isOutdated = std::exchange(reader.isOutdated, false);
    if (reader.place != nowhere && isOutdated)
        round.waiting.push_back(reader.place);
    else if (reader.place != nowhere)
        round.answers[reader.place] = {reading ? DriveAnswer::State::read : DriveAnswer::State::failed,
                                       reading.value_or(DriveReading{})};
    if (std::exchange(reader.isAwaited, false)) --round.running;
    reader.drive.clear();
    reader.place = nowhere;
    if (reading) return;
    reader.process.kill();
    reader.isKilled = true;
}

void DriveReaderPool::wait(Round& round, Clock::time_point until) {
    std::vector<pollfd> sockets;
    std::vector<Reader*> busy;
    for (Reader& reader : readers_) {
        if (reader.drive.empty() || reader.isKilled) continue;
        sockets.push_back({reader.process.socket(), POLLIN, 0});
        busy.push_back(&reader);
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    if (poll(sockets.data(), sockets.size(), static_cast<int>(std::max<long>(left, 0))) <= 0) return;
    for (std::size_t i = 0; i < sockets.size(); ++i)
        if (sockets[i].revents != 0) settle(round, *busy[i]);
}

void DriveReaderPool::giveUpOverdue(Round& round) {
    const Clock::time_point now = Clock::now();
    for (Reader& reader : readers_) {
        if (reader.drive.empty() || reader.isKilled || now - reader.since < options_.deadline) continue;
        reader.process.kill();
        reader.isKilled = true;
        if (const std::size_t place = round.placeOf(reader.drive); place != nowhere)
            round.answers[place].state = DriveAnswer::State::hung;
    }
}

}  // namespace calorivo
