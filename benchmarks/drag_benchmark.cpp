#include "benchmarks.h"
#include "editors/forms/fahrstufen.h"
#include "editors/forms/step_graph.h"
#include "paced_bench.h"
#include "workbench/offline_list.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>

namespace karvo::bench
{

namespace
{

constexpr int moves = 100;

void send(StepGraph& graph, QEvent::Type type, int value)
{
    const QPointF place = graph.endOfBar(middleStep, value);
    QMouseEvent event(type, place, graph.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&graph, &event);
}

} // namespace

double slowestDrag(const std::filesystem::path& programFolder)
{
    PacedBench bench(programFolder, sim::Fault::none);
    if (!showOfflineList(bench.workbench, "mnu_kv07"))
        return 0;
    Fahrstufen window(bench.workbench);
    auto* const graph = window.findChild<StepGraph*>();
    window.show();
    QCoreApplication::processEvents();
    send(*graph, QEvent::MouseButtonPress, graph->chosenValue());
    double slowest = 0;
    for (int value = 0; value < moves; ++value) {
        const auto start = Clock::now();
        send(*graph, QEvent::MouseMove, lowestSpeed + value);
        window.repaint();
        slowest = std::max(slowest, seconds(Clock::now() - start) * 1000);
    }
    return slowest;
}

} // namespace karvo::bench
