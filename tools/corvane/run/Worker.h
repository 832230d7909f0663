#pragma once

/// What `corvane worker` does: reads jobs, runs their rules and writes how they judged, until its
/// controller closes the line. Gives the exit status.
int runWorker();
