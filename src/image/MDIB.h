// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_IMAGE_MDIB_H
#define ZELK_IMAGE_MDIB_H

namespace zelk {

class MDIB {
 public:
  MDIB();
  MDIB(MDIB& dibSrc);
  ~MDIB();
  MDIB& operator=(const MDIB&) = delete;

  void Unload();
  int Init(int nWidth, int nHeight, int nBitCount, int nResolution);
  int Copy(MDIB* srcImg);
  int Rotate(MDIB* desImage, unsigned int option, double angle);
  int RotateImp(MDIB& imgsrc, MDIB& imgdst, unsigned int option, double angle);
  int RotateClockWise(MDIB& src, MDIB& dst);
  int Rotate180(MDIB& src, MDIB& dst);
  int RotateAntiClockWise(MDIB& src, MDIB& dst);

  bool IsEmpty() const;
  int GetWidth() const;
  int GetHeight() const;
  bool IsTrueColor() const;
  bool IsGray() const;
  bool IsBW() const;

  unsigned char** m_lpLine;
  unsigned char* m_lpBuf;
  int m_nWidth;
  int m_nHeight;
  int m_nBitCount;
  int m_nLineLength;
  int m_nResolutionX;
  int m_nResolutionY;
};

}  // namespace zelk

#endif  // ZELK_IMAGE_MDIB_H
