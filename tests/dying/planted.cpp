#include <QStringList>
#include <QString>
struct Base { virtual ~Base() = default; virtual int price() const { return 1; } };
struct Derived : Base { int price() const { return 2; } };
int planted(const QStringList& list)
{
    if (list.isEmpty()) return 0;
    for (QString text : list) { if (text.size() > 3) return 1; }
    Derived d; return d.price();
}
