#ifndef TOKENTEMPLATERESOLVER_EXPORT_H
#define TOKENTEMPLATERESOLVER_EXPORT_H

/// Marks what the shared library exports; everything else is compiled with hidden visibility.
#define TTR_EXPORT __attribute__((visibility("default")))

#endif  // TOKENTEMPLATERESOLVER_EXPORT_H
