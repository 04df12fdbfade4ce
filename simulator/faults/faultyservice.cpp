// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/faults/faultyservice.h"

#include "simulator/documents/windows1251.h"
#include "simulator/faults/faultplan.h"
#include "simulator/status.h"

#include <random>
#include <utility>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

Answer answerOf(const Request& request, const Fault& fault)
{
    Answer answer;
    answer.status = fault.status;
    answer.contentType = "text/plain; charset=utf-8";
    answer.body = fault.body;
    if (fault.status >= status::firstMoved && fault.status < status::firstRefusal) {
        answer.location = request.path.toPercentEncoding("/") + "/moved"; // where nothing is
    }
    return answer;
}

/// Changes a byte in eight and the first one, so that no reader takes it for what it was.
QByteArray garbled(QByteArray body, quint64 seed)
{
    constexpr quint64 share = 8;
    std::mt19937_64 generator(seed);
    for (char& byte : body) {
        if (generator() % share == 0) {
            byte = static_cast<char>(generator());
        }
    }
    if (!body.isEmpty()) {
        body.front() = '\x16';
    }
    return body;
}

} // namespace

FaultyService::FaultyService(Handler requestHandler, FaultPlan& faultPlan)
    : handler(std::move(requestHandler)), plan(faultPlan)
{}

Answer FaultyService::handle(const Request& request) const
{
    const std::optional<Fault> fault = plan.take(request);
    if (!fault) {
        return handler(request);
    }
    Answer answer = spoiled(request, *fault);
    answer.fault = fault;
    return answer;
}

Answer FaultyService::spoiled(const Request& request, const Fault& fault) const
{
    Answer honest;
    if (fault.isAfterBooking()) {
        honest = handler(request);
    }
    switch (fault.kind) {
    case FaultKind::StatusAfterBooking: {
        Answer answer = answerOf(request, fault);
        answer.checkId = honest.checkId;
        answer.cardNumber = honest.cardNumber;
        return answer;
    }
    case FaultKind::Status:
        return answerOf(request, fault);
    case FaultKind::GarbledBody:
        honest.body = garbled(honest.body, fault.random);
        return honest;
    case FaultKind::WrongEncoding:
        honest.body = inWindows1251(honest.body);
        return honest;
    case FaultKind::DuplicatedDelivery:
        handler(request);
        return honest;
    case FaultKind::ResentByProxy:
        return handler(request);
    default:
        return honest; // the rest is done where it is sent
    }
}

} // namespace simulator
