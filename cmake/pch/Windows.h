// Standard.h with the toolkit's common classes: for the framework and Stage's windows.
#pragma once

#include "cmake/pch/Standard.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWidget>
