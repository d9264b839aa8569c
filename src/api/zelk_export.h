/* SPDX-License-Identifier: Apache-2.0 */
#ifndef ZELK_EXPORT_H
#define ZELK_EXPORT_H

/* Marks what libzelk.so shows to its hosts; everything else is hidden. */
#define ZELK_EXPORT __attribute__((visibility("default")))

#endif /* ZELK_EXPORT_H */
