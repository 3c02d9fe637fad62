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
    sinceStart_.start();
}

Heartbeat::~Heartbeat()
{
    QFile report(QFile::decodeName(reportPath_));
    if (!report.open(QIODevice::WriteOnly))
        return;
    report.write("beats " + QByteArray::number(qulonglong(lateness_.size())) + "\nlargest_ms " +
                 QByteArray::number(largest_, 'f', 1) + "\nlargest_at_s " +
                 QByteArray::number(largestAt_, 'f', 2) + "\np99_ms " +
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
    const double late = std::max(0.0, passed - double(interval.count()));
    lateness_.push_back(float(late));
    if (late > largest_) {
        largest_ = late;
        largestAt_ = double(sinceStart_.elapsed()) / 1e3;
    }
}
