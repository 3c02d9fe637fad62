#include "app/Heartbeat.h"

#include <QFile>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds interval = 5ms;

} // namespace

Heartbeat::Heartbeat(QByteArray reportPath) : reportPath_(std::move(reportPath))
{
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { beat(); });
    timer_.start(interval);
    sinceLast_.start();
}

Heartbeat::~Heartbeat()
{
    const double largest =
        lateness_.empty() ? 0 : double(*std::max_element(lateness_.begin(), lateness_.end()));
    QFile report(QFile::decodeName(reportPath_));
    if (!report.open(QIODevice::WriteOnly))
        return;
    report.write("beats " + QByteArray::number(qulonglong(lateness_.size())) + "\nlargest_ms " +
                 QByteArray::number(largest, 'f', 1) + "\np99_ms " +
                 QByteArray::number(percentile(lateness_, 0.99), 'f', 1) + '\n');
}

double Heartbeat::percentile(std::vector<float> values, double part)
{
    if (values.empty())
        return 0;
    const auto at = std::min(values.size() - 1, std::size_t(part * double(values.size())));
    const auto middle = values.begin() + std::ptrdiff_t(at);
    std::nth_element(values.begin(), middle, values.end());
    return double(*middle);
}

void Heartbeat::beat()
{
    const double passed = double(sinceLast_.nsecsElapsed()) / 1e6;
    sinceLast_.restart();
    lateness_.push_back(float(std::max(0.0, passed - double(interval.count()))));
}
