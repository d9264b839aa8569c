// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_IMAGE_MDIB_H
#define ZELK_IMAGE_MDIB_H

namespace zelk {

// A raw raster: one block of pixel rows, top row first, with a table of row pointers.
//
// A pixel takes 1, 8 or 24 bits; no colour is interpreted. At 24 bits its three bytes keep the
// order in which they were written. At 1 bit the most significant bit of a byte is the leftmost
// pixel. Rows are padded to a multiple of 4 bytes. A raster is empty when either pointer is null.
//
// Operations that return int give 1 on success and 0 on failure. Memory that cannot be had is a
// failure, not an exception. One thread at a time.
class MDIB {
 public:
  // An empty raster without size, 300 dots per inch.
  MDIB();

  // Copies pixels and size. Both resolutions become the source's horizontal one. A copy of an empty
  // raster, or one whose memory cannot be had, is empty.
  MDIB(MDIB& dibSrc);

  ~MDIB();
  MDIB& operator=(const MDIB&) = delete;

  // Releases the pixels; the size becomes 0, the resolutions stay.
  void Unload();

  // Makes a raster of zero pixels. Sizes are in pixels and positive, the bit count is 1, 8 or 24,
  // the resolution in dots per inch. A raster that has this size and bit count already is cleared
  // in place and KEEPS its resolutions. On failure (sizes, bit count, a row beyond an int's range
  // of bytes, memory) the raster is empty, but the size and bit count asked for are stored.
  int Init(int nWidth, int nHeight, int nBitCount, int nResolution);

  // The same without the zeros, for a caller who writes every byte, the padding of rows too.
  int InitUncleared(int nWidth, int nHeight, int nBitCount, int nResolution);

  // Becomes a copy of the source, as by the copy constructor. This raster is released first:
  // copying a raster onto itself leaves it empty and returns 0, as does an empty source.
  int Copy(MDIB* srcImg);

  // Turns this raster into desImage: option 1 is 90 degrees clockwise, 2 is 180 degrees, 3 is 90
  // degrees anticlockwise; any other returns 0 and leaves the destination as it is. The angle has
  // no effect. With a null desImage the raster is turned in place, through a copy. With itself as
  // desImage its pixels are cleared before they are read.
  //
  // The destination is set up by Init with the source's horizontal resolution for both axes, so one
  // that has the resulting size already keeps its own resolutions.
  //
  // At 1 bit the half turn moves whole bytes of a row only: the last width mod 8 pixels of each
  // source row are lost and the first width mod 8 columns of the result are 0. The quarter turns
  // move every pixel.
  int Rotate(MDIB* desImage, unsigned int option, double angle);

  // The steps of Rotate; they read only the source and write only the destination, not this object.
  int RotateImp(MDIB& imgsrc, MDIB& imgdst, unsigned int option, double angle);
  int RotateClockWise(MDIB& src, MDIB& dst);
  int Rotate180(MDIB& src, MDIB& dst);
  int RotateAntiClockWise(MDIB& src, MDIB& dst);

  bool IsEmpty() const;
  int GetWidth() const;
  int GetHeight() const;
  bool IsTrueColor() const;  // 24 bits
  bool IsGray() const;       // 8 bits
  bool IsBW() const;         // 1 bit

  unsigned char** m_lpLine;  // m_nHeight pointers to the rows inside m_lpBuf, top row first; owned
  unsigned char* m_lpBuf;    // m_nHeight * m_nLineLength bytes; owned
  int m_nWidth;              // pixels
  int m_nHeight;             // pixels
  int m_nBitCount;           // bits per pixel
  int m_nLineLength;         // bytes from one row to the next
  int m_nResolutionX;        // dots per inch
  int m_nResolutionY;        // dots per inch
};

}  // namespace zelk

#endif  // ZELK_IMAGE_MDIB_H
